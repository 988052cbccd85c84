// The interface follows the desktop's settings.
#include "views/appearance/DesktopAppearance.h"

#include "platform/AccentSetting.h"
#include "platform/AppearanceSetting.h"
#include "platform/ContrastSetting.h"
#include "platform/MotionSetting.h"
#include "platform/TextScaleSetting.h"
#include "views/appearance/ViewSettings.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPalette>

namespace kelpa::test {
namespace {

/// Counts its subscribers, and notifies them all.
template <class Value>
class Listeners
{
public:
    using Changed = std::function<void(std::optional<Value>)>;

    std::unique_ptr<Subscription> add(Changed changed)
    {
        return std::make_unique<Held>(*this, std::move(changed));
    }
    void report(std::optional<Value> value)
    {
        for (const Held* held : m_held)
            held->changed(value);
    }
    std::size_t count() const { return m_held.size(); }

private:
    struct Held : Subscription
    {
        Held(Listeners& listeners, Changed callback)
            : owner(listeners), changed(std::move(callback))
        {
            owner.m_held.push_back(this);
        }
        ~Held() override { std::erase(owner.m_held, this); }

        Listeners& owner;
        Changed changed;
    };

    std::vector<const Held*> m_held;
};

class FakeAppearance : public AppearanceSetting
{
public:
    std::unique_ptr<Subscription>
    watchAppearance(std::function<void(std::optional<Appearance>)> changed) override
    {
        return listeners.add(std::move(changed));
    }
    Listeners<Appearance> listeners;
};

class FakeMotion : public MotionSetting
{
public:
    std::unique_ptr<Subscription>
    watchAnimations(std::function<void(std::optional<bool>)> changed) override
    {
        return listeners.add(std::move(changed));
    }
    Listeners<bool> listeners;
};

class FakeContrast : public ContrastSetting
{
public:
    std::unique_ptr<Subscription>
    watchContrast(std::function<void(std::optional<bool>)> changed) override
    {
        return listeners.add(std::move(changed));
    }
    Listeners<bool> listeners;
};

class FakeAccent : public AccentSetting
{
public:
    std::unique_ptr<Subscription>
    watchAccent(std::function<void(std::optional<QColor>)> changed) override
    {
        return listeners.add(std::move(changed));
    }
    Listeners<QColor> listeners;
};

class FakeTextScale : public TextScaleSetting
{
public:
    std::unique_ptr<Subscription>
    watchTextScale(std::function<void(std::optional<double>)> changed) override
    {
        return listeners.add(std::move(changed));
    }
    Listeners<double> listeners;
};

class DesktopAppearanceTest : public testing::Test
{
protected:
    void SetUp() override { QGuiApplication::setPalette(QPalette(Qt::white)); }
    void TearDown() override { QGuiApplication::setPalette(QPalette()); }

    void follow(std::optional<Appearance> fixedAppearance, std::optional<bool> fixedMotion)
    {
        followed.emplace(settings, fixedAppearance, fixedMotion);
        followed->followMotion(display);
        followed->followAppearance(appearance);
        followed->followMotion(portal);
    }

    ViewSettings settings;
    FakeAppearance appearance;
    FakeMotion display;
    FakeMotion portal;
    std::optional<DesktopAppearance> followed;
};

TEST_F(DesktopAppearanceTest, Where_the_desktop_does_not_say_the_palette_decides_and_is_followed)
{
    follow(std::nullopt, std::nullopt);
    EXPECT_EQ(settings.appearance(), Appearance::light);
    QGuiApplication::setPalette(QPalette(Qt::black));
    QCoreApplication::processEvents();
    EXPECT_EQ(settings.appearance(), Appearance::dark);
}

TEST_F(DesktopAppearanceTest, The_desktop_is_followed_until_it_has_no_preference_any_more)
{
    follow(std::nullopt, std::nullopt);
    appearance.listeners.report(Appearance::dark);
    EXPECT_EQ(settings.appearance(), Appearance::dark);
    appearance.listeners.report(Appearance::light);
    EXPECT_EQ(settings.appearance(), Appearance::light);
    appearance.listeners.report(Appearance::dark);
    appearance.listeners.report(std::nullopt);
    EXPECT_EQ(settings.appearance(), Appearance::light);
}

TEST_F(DesktopAppearanceTest, Motion_is_reduced_while_one_of_several_settings_asks_for_it)
{
    follow(std::nullopt, std::nullopt);
    EXPECT_FALSE(settings.isReducingMotion());
    display.listeners.report(false);
    EXPECT_TRUE(settings.isReducingMotion());
    portal.listeners.report(true);
    EXPECT_TRUE(settings.isReducingMotion());
    display.listeners.report(std::nullopt);
    EXPECT_FALSE(settings.isReducingMotion());
    portal.listeners.report(false);
    display.listeners.report(true);
    EXPECT_TRUE(settings.isReducingMotion());
}

TEST_F(DesktopAppearanceTest, Contrast_is_high_while_the_desktop_wants_it)
{
    FakeContrast contrast;
    follow(std::nullopt, std::nullopt);
    followed->followContrast(contrast);
    EXPECT_FALSE(settings.isHighContrast());
    contrast.listeners.report(true);
    EXPECT_TRUE(settings.isHighContrast());
    contrast.listeners.report(false);
    EXPECT_FALSE(settings.isHighContrast());
    contrast.listeners.report(true);
    contrast.listeners.report(std::nullopt);
    EXPECT_FALSE(settings.isHighContrast());
    followed.reset();
    EXPECT_EQ(contrast.listeners.count(), 0U);
}

TEST_F(DesktopAppearanceTest, The_accent_is_the_desktops_while_it_has_one)
{
    FakeAccent accent;
    follow(Appearance::dark, std::nullopt);
    followed->followAccent(accent);
    EXPECT_FALSE(settings.desktopAccent().isValid());
    int changes = 0;
    QObject::connect(&settings, &ViewSettings::desktopAccentChanged, [&changes] { ++changes; });
    accent.listeners.report(QColor("#ed5b00"));
    EXPECT_EQ(settings.desktopAccent(), QColor("#ed5b00"));
    accent.listeners.report(QColor("#ed5b00"));
    EXPECT_EQ(changes, 1);
    accent.listeners.report(std::nullopt);
    EXPECT_FALSE(settings.desktopAccent().isValid());
    EXPECT_EQ(changes, 2);
    followed.reset();
    EXPECT_EQ(accent.listeners.count(), 0U);
}

TEST_F(DesktopAppearanceTest, Texts_have_the_size_that_the_desktop_wants_until_it_wants_none)
{
    FakeTextScale textScale;
    follow(std::nullopt, std::nullopt);
    followed->followTextScale(textScale);
    EXPECT_EQ(settings.textScale(), 1);
    textScale.listeners.report(1.5);
    EXPECT_EQ(settings.textScale(), 1.5);
    textScale.listeners.report(1.25);
    EXPECT_EQ(settings.textScale(), 1.25);
    textScale.listeners.report(std::nullopt);
    EXPECT_EQ(settings.textScale(), 1);
    followed.reset();
    EXPECT_EQ(textScale.listeners.count(), 0U);
}

TEST_F(DesktopAppearanceTest, What_is_fixed_is_not_even_listened_to)
{
    follow(Appearance::dark, true);
    EXPECT_EQ(settings.appearance(), Appearance::dark);
    EXPECT_TRUE(settings.isReducingMotion());
    EXPECT_EQ(appearance.listeners.count() + display.listeners.count() + portal.listeners.count(),
              0U);
    follow(std::nullopt, false);
    EXPECT_EQ(appearance.listeners.count(), 1U);
    EXPECT_FALSE(settings.isReducingMotion());
    follow(Appearance::light, std::nullopt);
    EXPECT_EQ(appearance.listeners.count(), 0U);
    EXPECT_EQ(display.listeners.count(), 1U);
}

TEST_F(DesktopAppearanceTest, Nobody_listens_after_its_end)
{
    follow(std::nullopt, std::nullopt);
    ASSERT_EQ(portal.listeners.count(), 1U);
    followed.reset();
    EXPECT_EQ(appearance.listeners.count() + display.listeners.count() + portal.listeners.count(),
              0U);
}

} // namespace
} // namespace kelpa::test
