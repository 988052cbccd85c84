#include "views/ViewTypes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QString>

#include <array>
#include <memory>

// The build makes one for each module.
extern void qml_register_types_Kelpa_Appearance();
extern void qml_register_types_Kelpa_Scene();
extern void qml_register_types_Kelpa_Controls();
extern void qml_register_types_Kelpa_Backups();
extern void qml_register_types_Kelpa_Transfer();
extern void qml_register_types_Kelpa_Entry();
extern void qml_register_types_Kelpa_Goals();
extern void qml_register_types_Kelpa_Todos();
extern void qml_register_types_Kelpa_Windows();
extern void qml_register_types_Kelpa_Board();

namespace kelpa {

namespace {

/// What is created on first use, all of it by its file.
const std::array deferredFiles{QUrl(QStringLiteral("qrc:/qt/qml/Kelpa/Board/BoardSheets.qml")),
                               QUrl(QStringLiteral("qrc:/qt/qml/Kelpa/Board/CardMenus.qml")),
                               ViewTypes::entryFile()};

} // namespace

void registerViewTypes()
{
    qml_register_types_Kelpa_Appearance();
    qml_register_types_Kelpa_Scene();
    qml_register_types_Kelpa_Controls();
    qml_register_types_Kelpa_Backups();
    qml_register_types_Kelpa_Transfer();
    qml_register_types_Kelpa_Entry();
    qml_register_types_Kelpa_Goals();
    qml_register_types_Kelpa_Todos();
    qml_register_types_Kelpa_Windows();
    qml_register_types_Kelpa_Board();
}

ViewTypes::ViewTypes()
{
    registerViewTypes();
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    m_window.loadUrl(mainFile(), QQmlComponent::Asynchronous);
}

QUrl ViewTypes::mainFile()
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Kelpa/Board/Main.qml"));
}

QUrl ViewTypes::entryFile()
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Kelpa/Entry/EntryWindow.qml"));
}

void ViewTypes::serve()
{
    // The type of the engine's requests. Nothing else that waits for the event loop is due yet.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::User);
}

void ViewTypes::readRest()
{
    if (!m_rest.empty())
        return;
    for (const QUrl& file : deferredFiles) {
        m_rest.push_back(std::make_unique<QQmlComponent>(&m_engine));
        m_rest.back()->loadUrl(file, QQmlComponent::Asynchronous);
    }
}

} // namespace kelpa
