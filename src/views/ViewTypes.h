// The QML engine and the types of the views' modules.
#pragma once

#include <QQmlComponent>
#include <QQmlEngine>
#include <QUrl>

#include <memory>
#include <vector>

namespace kelpa {

/// Makes the types of all modules known to QML and keeps the linker from dropping them. To be
/// called before an engine imports one of the modules; further calls do no harm. Main thread.
void registerViewTypes();

/// An engine whose own thread reads the types of the board's window from the construction on.
/// Reading them is the longest single part of the start, so this exists before anything else that
/// the board needs. Main thread, with an application object.
class ViewTypes
{
public:
    ViewTypes();

    QQmlEngine& engine() { return m_engine; }
    /// The file with the board's window.
    static QUrl mainFile();
    /// The file with the window of the field for a todo.
    static QUrl entryFile();

    /// Does what the engine's thread has asked of the main thread, for which it waits: to be called
    /// every few milliseconds until the types are read. Does nothing else.
    static void serve();

    /// Has the types of menus and sheets read as well, which exist only once they open.
    void readRest();

private:
    QQmlEngine m_engine;
    QQmlComponent m_window{&m_engine};
    /// Keep the types, and so the first menu as quick as those that follow.
    std::vector<std::unique_ptr<QQmlComponent>> m_rest;
};

} // namespace kelpa
