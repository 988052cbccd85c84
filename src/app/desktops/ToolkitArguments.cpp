#include "app/desktops/ToolkitArguments.h"

#include <utility>

namespace kelpa {

namespace {

/// The value of an option of the toolkit, which has one dash or two; the last one wins.
QByteArray valueOf(const QStringList& arguments, const QString& option)
{
    QByteArray value;
    for (qsizetype i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments.at(i) == u'-' + option || arguments.at(i) == QStringLiteral("--") + option)
            value = arguments.at(i + 1).toLocal8Bit();
    }
    return value;
}

} // namespace

WindowSystem chosenWindowSystem(const QStringList& arguments, const QByteArray& platformVariable)
{
    const QByteArray asked = valueOf(arguments, QStringLiteral("platform"));
    const bool isVariableMeant =
        !platformVariable.isEmpty() && !platformVariable.startsWith("wayland");
    const QByteArray platform = !asked.isEmpty()  ? asked
                                : isVariableMeant ? platformVariable
                                                  : "xcb";
    return {.isX11 = platform.startsWith("xcb"),
            .display = valueOf(arguments, QStringLiteral("display")),
            .isDefault = asked.isEmpty() && !isVariableMeant};
}

ToolkitArguments::ToolkitArguments(int argc, char** argv, QByteArray platform)
    : m_value(std::move(platform)), m_values(argv, argv + argc)
{
    // As an option, since programs launched from here would inherit an environment variable.
    if (!m_value.isEmpty() && !m_values.empty())
        m_values.insert(m_values.begin() + 1, {m_option.data(), m_value.data()});
    m_count = static_cast<int>(m_values.size());
    m_values.push_back(nullptr);
}

} // namespace kelpa
