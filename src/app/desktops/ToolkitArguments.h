// Chooses the toolkit's window system and prepares its arguments.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace kelpa {

/// The window system that the toolkit is to use.
struct WindowSystem
{
    bool isX11 = true;
    /// The X display, as in the DISPLAY variable; empty means that variable.
    QByteArray display = {};
    /// Neither the command line nor the environment chose it, so the toolkit might choose another.
    bool isDefault = true;

    friend bool operator==(const WindowSystem&, const WindowSystem&) = default;
};

/// `arguments` as passed to the program, `platformVariable` the value of QT_QPA_PLATFORM. In a
/// session that prefers Wayland, Kelpa runs on X11 all the same, as the windows that it lists do:
/// only the command line overrides that, or a variable that names a platform other than Wayland.
WindowSystem chosenWindowSystem(const QStringList& arguments, const QByteArray& platformVariable);

/// The program's arguments plus those for the toolkit. Outlives the toolkit.
class ToolkitArguments
{
public:
    /// `platform` is for the option -platform; empty leaves the choice to the toolkit.
    ToolkitArguments(int argc, char** argv, QByteArray platform);
    ToolkitArguments(const ToolkitArguments&) = delete;
    ToolkitArguments& operator=(const ToolkitArguments&) = delete;

    /// The toolkit removes its own arguments, and so changes the count.
    int& count() { return m_count; }
    char** values() { return m_values.data(); }

private:
    QByteArray m_option = "-platform";
    QByteArray m_value;
    std::vector<char*> m_values;
    int m_count = 0;
};

} // namespace kelpa
