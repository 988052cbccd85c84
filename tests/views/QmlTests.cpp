// Runs the tests of QML types, each with a board of its own over a desktop of plain data.
#include "views/ViewTypes.h"
#include "views/World.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest/quicktest.h>

namespace {

using namespace kelpa;

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    /// Called for each file of tests, with an engine of its own.
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        registerViewTypes();
        engine->addImportPath(QStringLiteral(":/qt/qml"));
        auto* const world = new test::World(engine);
        engine->rootContext()->setContextProperty(QStringLiteral("world"), world);
        engine->addImageProvider(AppIconProvider::name(), world->makeIconProvider().release());
        world->followLanguage(*engine->singletonInstance<ViewSettings*>(
            qmlTypeId("Kelpa.Appearance", 1, 0, "ViewSettings")));
    }
};

} // namespace

QUICK_TEST_MAIN_WITH_SETUP(kelpa_views, Setup)

#include "QmlTests.moc"
