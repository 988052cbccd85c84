#include "app/ToolkitArguments.h"

namespace kelpa {

namespace {

/// What follows an option of the toolkit's, which takes one dash or two; the last one counts.
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

ToolkitArguments::ToolkitArguments(int argc, char** argv, const WindowSystem& system)
    : m_values(argv, argv + argc)
{
    // Not as a variable, which every program that is launched from here would inherit.
    if (system.isDefault && !m_values.empty())
        m_values.insert(m_values.begin() + 1, {m_option.data(), m_value.data()});
    m_count = static_cast<int>(m_values.size());
    m_values.push_back(nullptr);
}

} // namespace kelpa
