// How many objects the first frame has for what it shows most often: the start takes longer with
// each.
#include "views/ViewEngineFixture.h"

#include <QByteArray>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <memory>

namespace kelpa::test {
namespace {

class FirstFrameObjectsTest : public ViewEngineFixture
{
protected:
    void SetUp() override
    {
        for (int number = 1; number <= 3; ++number)
            makeGoal(QString::number(number));
        makeTodo(store().goals().first().id);
    }

    /// The most objects that an item of a type of the views consists of; 0 where there is no such
    /// item.
    qsizetype objects(const QByteArray& type) const
    {
        return objects(*view.window()->contentItem(), type);
    }

    /// The same while the items of the first frame are in place and about to be drawn, and in
    /// `later` once the board has all that its rows can have.
    struct Count
    {
        qsizetype atFirst = 0;
        qsizetype later = 0;
    };
    Count count(const QByteArray& type)
    {
        Count count;
        EXPECT_TRUE(view.show());
        QObject::connect(
            view.window(), &QQuickWindow::afterAnimating, &view,
            [&] { count.atFirst = objects(type); },
            static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
        EXPECT_TRUE(QSignalSpy(&view, &ViewEngine::boardShown).wait());
        EXPECT_TRUE(QTest::qWaitFor([&] { return objects(type) > count.atFirst; }));
        count.later = objects(type);
        return count;
    }

private:
    static qsizetype objects(const QQuickItem& item, const QByteArray& type)
    {
        if (isOfType(item, type))
            return 1 + item.findChildren<QObject*>().size();
        qsizetype most = 0;
        const QList<QQuickItem*> children = item.childItems();
        for (const QQuickItem* const child : children)
            most = std::max(most, objects(*child, type));
        return most;
    }
};

TEST_F(FirstFrameObjectsTest, A_row_of_a_todo_gets_what_can_be_pressed_after_the_first_frame)
{
    const Count row = count("TodoRow");
    EXPECT_GT(row.atFirst, 0);
    EXPECT_LE(row.atFirst, 22);
    EXPECT_LE(row.later, 68);
}

TEST_F(FirstFrameObjectsTest, An_entry_of_the_rail_accepts_drops_after_the_first_frame)
{
    const Count entry = count("BreadcrumbEntry");
    EXPECT_GT(entry.atFirst, 0);
    EXPECT_LE(entry.atFirst, 19);
    EXPECT_LE(entry.later, 27);
}

} // namespace
} // namespace kelpa::test
