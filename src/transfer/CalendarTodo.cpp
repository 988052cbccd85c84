#include "transfer/CalendarTodo.h"

#include "model/UtcTime.h"
#include "transfer/TransferValues.h"

#include <libical/ical.h>

#include <algorithm>
#include <array>
#include <memory>

namespace kelpa {

namespace {

constexpr const char* goalMark = "X-KELPA-GOAL";
constexpr int allDone = 100;

struct FreeComponent
{
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
struct FreeProperty
{
    void operator()(icalproperty* property) const { icalproperty_free(property); }
};
struct FreeText
{
    void operator()(char* text) const { icalmemory_free_buffer(text); }
};
using Component = std::unique_ptr<icalcomponent, FreeComponent>;
using Property = std::unique_ptr<icalproperty, FreeProperty>;
using Text = std::unique_ptr<char, FreeText>;

QString fromLibrary(const char* text)
{
    return QString::fromUtf8(text);
}

/// With spaces for what the library's text values may not have.
QString withoutControls(QString text)
{
    std::ranges::replace_if(
        text,
        [](QChar c) { return c.category() == QChar::Other_Control && c != u'\n' && c != u'\t'; },
        QChar(u' '));
    return text;
}

/// The zone that a TZID names: "Europe/Berlin", the same after the name of who defined it, or one
/// of Windows's names.
QTimeZone zoneNamed(const QByteArray& name)
{
    QByteArray rest = name;
    while (!rest.isEmpty()) {
        const QTimeZone zone(rest);
        if (zone.isValid())
            return zone;
        const qsizetype slash = rest.indexOf('/');
        rest = slash < 0 ? QByteArray() : rest.sliced(slash + 1);
    }
    return QTimeZone(QTimeZone::windowsIdToDefaultIanaId(name));
}

std::optional<Date> completionTime(icalproperty* property, const QTimeZone& zone)
{
    const icaltimetype time = icalproperty_get_completed(property);
    const QDate day(time.year, time.month, time.day);
    if (!day.isValid())
        return std::nullopt;
    if (time.is_date != 0)
        return noonOf(day, zone);
    const QTime clock(time.hour, time.minute, std::min(time.second, 59));
    if (!clock.isValid())
        return std::nullopt;
    if (icaltime_is_utc(time) != 0)
        return Date::fromDateTime(utcTime(day, clock));
    icalparameter* const parameter =
        icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    const char* const name = parameter != nullptr ? icalparameter_get_tzid(parameter) : nullptr;
    const QTimeZone named = name != nullptr ? zoneNamed(name) : QTimeZone();
    return Date::fromDateTime(QDateTime(day, clock, named.isValid() ? named : zone));
}

TodoStatus statusOf(icalproperty_status status)
{
    switch (status) {
    case ICAL_STATUS_COMPLETED:
    // Nobody has to do it any more.
    case ICAL_STATUS_CANCELLED:
        return TodoStatus::completed;
    case ICAL_STATUS_INPROCESS:
        return TodoStatus::ing;
    default:
        return TodoStatus::todo;
    }
}

bool isParent(icalproperty* relation)
{
    icalparameter* const type = icalproperty_get_first_parameter(relation, ICAL_RELTYPE_PARAMETER);
    return type == nullptr || icalparameter_get_reltype(type) == ICAL_RELTYPE_PARENT;
}

/// Gathers the properties of a component.
class TodoReader
{
public:
    explicit TodoReader(const QTimeZone& zone) : m_zone(zone) {}

    void take(icalproperty* property)
    {
        switch (icalproperty_isa(property)) {
        case ICAL_UID_PROPERTY:
            m_todo.uid = fromLibrary(icalproperty_get_uid(property));
            return;
        case ICAL_SUMMARY_PROPERTY:
            m_todo.title = withoutControls(fromLibrary(icalproperty_get_summary(property)));
            return;
        case ICAL_STATUS_PROPERTY:
            m_todo.status = statusOf(icalproperty_get_status(property));
            m_hasStatus = true;
            return;
        case ICAL_COMPLETED_PROPERTY:
            m_hasCompleted = true;
            m_todo.completedAt = completionTime(property, m_zone);
            return;
        case ICAL_PERCENTCOMPLETE_PROPERTY:
            m_percent = icalproperty_get_percentcomplete(property);
            return;
        case ICAL_PRIORITY_PROPERTY:
            m_todo.priority = icalproperty_get_priority(property);
            return;
        case ICAL_CATEGORIES_PROPERTY:
            m_todo.categories.append(
                withoutControls(fromLibrary(icalproperty_get_categories(property))));
            return;
        case ICAL_RELATEDTO_PROPERTY:
            if (isParent(property))
                m_todo.parent = fromLibrary(icalproperty_get_relatedto(property));
            return;
        case ICAL_X_PROPERTY:
            if (qstricmp(icalproperty_get_x_name(property), goalMark) == 0)
                m_todo.isGoal = true;
            return;
        default:
            return;
        }
    }

    CalendarTodo take()
    {
        if (!m_hasStatus) {
            if (m_hasCompleted || m_percent >= allDone)
                m_todo.status = TodoStatus::completed;
            else if (m_percent > 0)
                m_todo.status = TodoStatus::ing;
        }
        return m_todo;
    }

private:
    QTimeZone m_zone;
    CalendarTodo m_todo;
    bool m_hasStatus = false;
    bool m_hasCompleted = false;
    int m_percent = 0;
};

/// Never empty for a text that is not: without a title, a goal would not come back.
QByteArray toLibrary(const QString& text)
{
    const QString kept = withoutControls(text);
    const bool isLost = kept.trimmed().isEmpty() && !text.isEmpty();
    return (isLost ? QString(QChar(QChar::ReplacementCharacter)) : kept).toUtf8();
}

icalproperty_status statusOf(TodoStatus status)
{
    switch (status) {
    case TodoStatus::todo:
        return ICAL_STATUS_NEEDSACTION;
    case TodoStatus::ing:
        return ICAL_STATUS_INPROCESS;
    case TodoStatus::completed:
        return ICAL_STATUS_COMPLETED;
    }
    Q_UNREACHABLE();
}

icaltimetype libraryTime(const QDateTime& utc)
{
    icaltimetype time = icaltime_null_time();
    time.year = utc.date().year();
    time.month = utc.date().month();
    time.day = utc.date().day();
    time.hour = utc.time().hour();
    time.minute = utc.time().minute();
    time.second = utc.time().second();
    time.zone = icaltimezone_get_utc_timezone();
    return time;
}

} // namespace

bool isCalendarTodoProperty(const QByteArray& upperCaseName)
{
    static constexpr std::array names{"UID",        "SUMMARY",          "STATUS",
                                      "COMPLETED",  "PRIORITY",         "CATEGORIES",
                                      "RELATED-TO", "PERCENT-COMPLETE", goalMark};
    return std::ranges::any_of(
        names, [&upperCaseName](const char* name) { return upperCaseName == name; });
}

std::optional<CalendarTodo> readCalendarTodo(const QByteArray& contentLines, const QTimeZone& zone)
{
    const QByteArray text = "BEGIN:VTODO\r\n" + contentLines + "END:VTODO\r\n";
    const Component component(icalparser_parse_string(text.constData()));
    if (!component || icalcomponent_isa(component.get()) != ICAL_VTODO_COMPONENT)
        return std::nullopt;
    TodoReader reader(zone);
    for (icalproperty* property =
             icalcomponent_get_first_property(component.get(), ICAL_ANY_PROPERTY);
         property != nullptr;
         property = icalcomponent_get_next_property(component.get(), ICAL_ANY_PROPERTY))
        reader.take(property);
    return reader.take();
}

QByteArray writtenCalendarTodo(const CalendarTodo& todo, Date now)
{
    const Component component(icalcomponent_new_vtodo());
    const auto add = [&component](icalproperty* property) {
        icalcomponent_add_property(component.get(), property);
    };
    add(icalproperty_new_uid(toLibrary(todo.uid).constData()));
    if (const auto time = dateTimeOf(now))
        add(icalproperty_new_dtstamp(libraryTime(*time)));
    add(icalproperty_new_summary(toLibrary(todo.title).constData()));
    if (todo.isGoal) {
        icalproperty* const mark = icalproperty_new_x("TRUE");
        icalproperty_set_x_name(mark, goalMark);
        add(mark);
    } else {
        add(icalproperty_new_status(statusOf(todo.status)));
    }
    if (todo.priority > 0)
        add(icalproperty_new_priority(todo.priority));
    if (const auto time = todo.completedAt ? dateTimeOf(*todo.completedAt) : std::nullopt) {
        add(icalproperty_new_completed(libraryTime(*time)));
        add(icalproperty_new_percentcomplete(allDone));
    }
    for (const QString& category : todo.categories)
        add(icalproperty_new_categories(toLibrary(category).constData()));
    if (!todo.parent.isEmpty()) {
        icalproperty* const relation =
            icalproperty_new_relatedto(toLibrary(todo.parent).constData());
        icalproperty_add_parameter(relation, icalparameter_new_reltype(ICAL_RELTYPE_PARENT));
        add(relation);
    }
    const Text text(icalcomponent_as_ical_string_r(component.get()));
    return QByteArray(text.get());
}

QString textOfContentLine(const QByteArray& contentLine)
{
    const Property property(icalproperty_new_from_string(contentLine.constData()));
    const icalvalue* const value = property ? icalproperty_get_value(property.get()) : nullptr;
    if (value == nullptr)
        return {};
    if (icalvalue_isa(value) == ICAL_TEXT_VALUE)
        return withoutControls(fromLibrary(icalvalue_get_text(value)));
    return icalvalue_isa(value) == ICAL_X_VALUE
               ? withoutControls(fromLibrary(icalvalue_get_x(value)))
               : QString();
}

} // namespace kelpa
