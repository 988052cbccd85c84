#include "views/scene/ReadingOrder.h"

#include <QCoreApplication>
#include <QQuickItem>

#include <gtest/gtest.h>

#include <memory>

namespace {

using kelpa::ReadingOrder;

class ReadingOrders : public testing::Test
{
protected:
    QQuickItem* child(double z)
    {
        auto* const item = new QQuickItem(&m_container);
        item->setZ(z);
        return item;
    }
    QList<QQuickItem*> order()
    {
        QCoreApplication::sendPostedEvents(&m_order);
        return m_container.childItems();
    }

    QQuickItem m_container;
    ReadingOrder m_order;
};

TEST_F(ReadingOrders, Items_are_read_by_z_and_those_of_one_z_in_the_order_in_which_they_were_made)
{
    QQuickItem* const last = child(2);
    QQuickItem* const first = child(0);
    QQuickItem* const second = child(1);
    QQuickItem* const third = child(1);
    m_order.setContainer(&m_container);
    EXPECT_EQ(order(), (QList<QQuickItem*>{first, second, third, last}));
}

TEST_F(ReadingOrders, An_item_that_gets_another_z_or_comes_later_takes_its_place)
{
    m_order.setContainer(&m_container);
    QQuickItem* const one = child(0);
    QQuickItem* const two = child(1);
    QQuickItem* const three = child(2);
    EXPECT_EQ(order(), (QList<QQuickItem*>{one, two, three}));
    three->setZ(0);
    one->setZ(1);
    two->setZ(2);
    EXPECT_EQ(order(), (QList<QQuickItem*>{three, one, two}));
    QQuickItem* const before = child(-1);
    EXPECT_EQ(order(), (QList<QQuickItem*>{before, three, one, two}));
}

TEST_F(ReadingOrders, A_container_that_is_let_go_keeps_its_order)
{
    m_order.setContainer(&m_container);
    QQuickItem* const one = child(0);
    QQuickItem* const two = child(1);
    EXPECT_EQ(order(), (QList<QQuickItem*>{one, two}));
    m_order.setContainer(nullptr);
    one->setZ(2);
    EXPECT_EQ(order(), (QList<QQuickItem*>{one, two}));
}

TEST(ReadingOrder, A_container_may_go_first)
{
    auto container = std::make_unique<QQuickItem>();
    ReadingOrder order;
    order.setContainer(container.get());
    auto* const item = new QQuickItem(container.get());
    item->setZ(1);
    container.reset();
    QCoreApplication::sendPostedEvents(&order);
    EXPECT_EQ(order.container(), nullptr);
}

} // namespace
