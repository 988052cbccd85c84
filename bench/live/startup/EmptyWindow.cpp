// The smallest Qt Quick program, as the baseline for Kelpa's start.
#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\n"
                    "Window { visible: true; width: 1280; height: 800; title: 'Empty'\n"
                    "Rectangle { anchors.fill: parent; color: '#f3f5f8' } }\n");
    return QGuiApplication::exec();
}
