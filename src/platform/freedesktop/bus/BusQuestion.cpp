#include "platform/freedesktop/bus/BusQuestion.h"

#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <QStringList>

#include <optional>

namespace kelpa {

namespace {

constexpr std::chrono::milliseconds connectionLimit{500};

/// A main context of its own, so that no other source is dispatched meanwhile.
class OwnContext
{
public:
    OwnContext() : m_context(g_main_context_new())
    {
        g_main_context_push_thread_default(m_context.get());
    }
    OwnContext(const OwnContext&) = delete;
    OwnContext& operator=(const OwnContext&) = delete;
    ~OwnContext() { g_main_context_pop_thread_default(m_context.get()); }

    template <class Value>
    Value await(const std::optional<Value>& value) const
    {
        while (!value)
            g_main_context_iteration(m_context.get(), TRUE);
        return *value;
    }

private:
    const GlibPointer<GMainContext> m_context;
};

GVariant* argumentFrom(const QVariant& value)
{
    if (value.userType() == QMetaType::Bool)
        return g_variant_new_boolean(value.toBool() ? TRUE : FALSE);
    if (value.userType() == QMetaType::UInt)
        return g_variant_new_uint32(value.toUInt());
    return g_variant_new_string(value.toString().toUtf8().constData());
}

GVariant* argumentsFrom(const QVariantList& values)
{
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_TUPLE);
    for (const QVariant& value : values)
        g_variant_builder_add_value(&builder, argumentFrom(value));
    return g_variant_builder_end(&builder);
}

QString textFrom(GVariant* value)
{
    return QString::fromUtf8(g_variant_get_string(value, nullptr));
}

QVariant valueFrom(GVariant* value);

QVariantMap mapFrom(GVariant* dictionary)
{
    QVariantMap map;
    for (gsize i = 0; i < g_variant_n_children(dictionary); ++i) {
        const GlibPointer<GVariant> entry(g_variant_get_child_value(dictionary, i));
        const GlibPointer<GVariant> key(g_variant_get_child_value(entry.get(), 0));
        const GlibPointer<GVariant> boxed(g_variant_get_child_value(entry.get(), 1));
        const GlibPointer<GVariant> value(g_variant_get_variant(boxed.get()));
        map.insert(textFrom(key.get()), valueFrom(value.get()));
    }
    return map;
}

template <class List, class Read>
QVariant listFrom(GVariant* array, const Read& read)
{
    List list;
    for (gsize i = 0; i < g_variant_n_children(array); ++i) {
        const GlibPointer<GVariant> element(g_variant_get_child_value(array, i));
        list.append(read(element.get()));
    }
    return QVariant::fromValue(list);
}

QVariant valueFrom(GVariant* value)
{
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) != FALSE)
        return textFrom(value);
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != FALSE)
        return g_variant_get_boolean(value) != FALSE;
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE)
        return static_cast<uint>(g_variant_get_uint32(value));
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_INT32) != FALSE)
        return static_cast<int>(g_variant_get_int32(value));
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING_ARRAY) != FALSE)
        return listFrom<QStringList>(value, textFrom);
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_VARDICT) != FALSE)
        return mapFrom(value);
    if (g_variant_is_of_type(value, G_VARIANT_TYPE("aa{sv}")) != FALSE)
        return listFrom<QList<QVariantMap>>(value, mapFrom);
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT) != FALSE)
        return valueFrom(GlibPointer<GVariant>(g_variant_get_variant(value)).get());
    return {};
}

QVariantList replyFrom(GVariant* tuple)
{
    QVariantList values;
    for (gsize i = 0; i < g_variant_n_children(tuple); ++i)
        values.append(valueFrom(GlibPointer<GVariant>(g_variant_get_child_value(tuple, i)).get()));
    return values;
}

BusAnswer errorFrom(BusOutcome outcome, const GError* error)
{
    if (outcome == BusOutcome::silent || error == nullptr)
        return BusSilence::noReply;
    if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) != FALSE ||
        g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) != FALSE)
        return BusSilence::noOwner;
    const GlibPointer<char> name(g_dbus_error_get_remote_error(error));
    const GlibPointer<GError> plain(g_error_copy(error));
    g_dbus_error_strip_remote_error(plain.get());
    return BusError{QString::fromUtf8(name.get()), QString::fromUtf8(plain->message)};
}

} // namespace

BusAnswer askOnSessionBus(const BusQuestion& question, std::chrono::milliseconds limit)
{
    const QByteArray address = sessionBusAddress();
    if (address.isEmpty())
        return BusSilence::noBus;
    const OwnContext context;
    AsyncBus bus;
    std::optional<bool> isOpen;
    bus.open(address.toStdString(), connectionLimit, [&isOpen](bool opened) { isOpen = opened; });
    if (!context.await(isOpen))
        return BusSilence::noBus;
    std::optional<BusAnswer> reply;
    bus.callForError({question.busName.toStdString(), question.path.toStdString(),
                      question.interface.toStdString()},
                     question.method.constData(), argumentsFrom(question.arguments), limit,
                     [&reply](BusOutcome outcome, GVariant* value, const GError* error) {
                         reply = value != nullptr ? BusAnswer(replyFrom(value))
                                                  : errorFrom(outcome, error);
                     });
    return context.await(reply);
}

} // namespace kelpa
