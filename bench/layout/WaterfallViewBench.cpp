// The time of a pass of the view that lays out the cards of the board, and the number of cards that
// have items, in a visible range of 1000 x 800 points in the middle of the board.
#include "views/ViewTypes.h"
#include "views/scene/WaterfallView.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QStandardItemModel>

#include <memory>

namespace kelpa {
namespace {

constexpr auto source = R"(
import QtQuick
import Kelpa.Scene

WaterfallView {
    width: 1000
    minimumColumnWidth: 320
    spacing: 22
    assumedHeight: 292

    WaterfallDelegate {
        Rectangle {
            required property int index

            implicitHeight: 292
            height: implicitHeight
            radius: 14
        }
    }
}
)";

class Screen
{
public:
    explicit Screen(int cards) : m_cards(cards, 1)
    {
        registerViewTypes();
        m_engine.addImportPath(QStringLiteral(":/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData(source, {});
        m_view.reset(qobject_cast<WaterfallView*>(component.create()));
        if (m_view == nullptr)
            qFatal("no view: %s", qPrintable(component.errorString()));
        m_view->setParentItem(m_window.contentItem());
        m_view->setModel(&m_cards);
        m_view->layOut();
        showFrom(m_view->implicitHeight() / 2);
    }

    WaterfallView& view() { return *m_view; }
    double top() const { return m_view->visibleFrom(); }
    void showFrom(double top)
    {
        m_view->setVisibleFrom(top);
        m_view->setVisibleTo(top + 800);
        m_view->layOut();
    }

private:
    QStandardItemModel m_cards;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<WaterfallView> m_view;
};

void countItems(benchmark::State& state, Screen& screen)
{
    state.counters["items"] = screen.view().itemCount();
}

void passAfterACardGrew(benchmark::State& state)
{
    Screen screen(static_cast<int>(state.range(0)));
    int row = 0;
    while (screen.view().itemAtRow(row) == nullptr)
        ++row;
    QQuickItem& card = *screen.view().itemAtRow(row);
    double height = 292;
    for ([[maybe_unused]] auto _ : state) {
        height = height < 400 ? height + 1 : 292;
        card.setImplicitHeight(height);
        screen.view().layOut();
    }
    countItems(state, screen);
}
BENCHMARK(passAfterACardGrew)->Arg(10)->Arg(200)->Arg(2000);

void passAfterAStepOfScrolling(benchmark::State& state)
{
    Screen screen(static_cast<int>(state.range(0)));
    const double start = screen.top();
    double step = 0;
    for ([[maybe_unused]] auto _ : state) {
        step = step < 600 ? step + 40 : 0;
        screen.showFrom(start + step - 300);
    }
    countItems(state, screen);
}
BENCHMARK(passAfterAStepOfScrolling)->Arg(10)->Arg(200)->Arg(2000);

} // namespace
} // namespace kelpa

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
