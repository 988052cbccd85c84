// What the toolkit is started with.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace kelpa {

/// The window system that the toolkit is told to use.
struct WindowSystem
{
    bool isX11 = true;
    /// The X display, as in the DISPLAY variable; empty means that variable.
    QByteArray display = {};
    /// Nobody has chosen it, and the toolkit might take another one.
    bool isDefault = true;

    friend bool operator==(const WindowSystem&, const WindowSystem&) = default;
};

/// `arguments` as the program got them, `platformVariable` the value of QT_QPA_PLATFORM. Where the
/// session prefers Wayland, Kelpa stays among the windows that it lists, which are those of X11:
/// only the command line makes it go elsewhere, or a variable that names something else altogether.
WindowSystem chosenWindowSystem(const QStringList& arguments, const QByteArray& platformVariable);

/// The program's arguments with those that the toolkit needs besides. Outlives the toolkit.
class ToolkitArguments
{
public:
    ToolkitArguments(int argc, char** argv, const WindowSystem& system);
    ToolkitArguments(const ToolkitArguments&) = delete;
    ToolkitArguments& operator=(const ToolkitArguments&) = delete;

    /// The toolkit takes its own out.
    int& count() { return m_count; }
    char** values() { return m_values.data(); }

private:
    QByteArray m_option = "-platform";
    QByteArray m_value = "xcb";
    std::vector<char*> m_values;
    int m_count = 0;
};

} // namespace kelpa
