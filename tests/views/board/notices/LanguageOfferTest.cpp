// The offer to go on in another language.
#include "views/board/notices/LanguageOffer.h"

#include "support/StoreFixture.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

using LanguageOfferTest = StoreFixture;

TEST_F(LanguageOfferTest, The_desktop_s_language_is_offered_in_its_own_words_and_gone_for_good)
{
    LanguageOffer offer(store(), {QStringLiteral("de-AT"), QStringLiteral("en")});
    const QSignalSpy changes(&offer, &LanguageOffer::isOpenChanged);
    EXPECT_TRUE(offer.isOpen());
    EXPECT_EQ(offer.texts(), QStringList{QStringLiteral("Auf Deutsch fortfahren")});
    offer.take(1);
    offer.take(-1);
    EXPECT_TRUE(offer.isOpen());
    offer.take(0);
    EXPECT_EQ(store().language(), AppLanguage::german);
    EXPECT_FALSE(offer.isOpen());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_FALSE(LanguageOffer(restartedStore(), {QStringLiteral("fr")}).isOpen());
}

TEST_F(LanguageOfferTest, Every_language_is_offered_where_the_desktop_s_is_not_spoken)
{
    LanguageOffer offer(store(), {QStringLiteral("pt-BR")});
    EXPECT_EQ(offer.texts(), (QStringList{QStringLiteral("中文"), QStringLiteral("English"),
                                          QStringLiteral("日本語"), QStringLiteral("한국어"),
                                          QStringLiteral("Français"), QStringLiteral("Deutsch")}));
    EXPECT_EQ(offer.keys().value(5), QStringLiteral("Alt+6"));
    offer.take(0);
    EXPECT_FALSE(offer.isOpen()) << "the present language can be chosen, too";
    EXPECT_EQ(store().language(), AppLanguage::chinese);
}

TEST_F(LanguageOfferTest, A_language_that_is_chosen_in_the_menu_ends_the_offer)
{
    const LanguageOffer offer(store(), {QStringLiteral("en")});
    store().setLanguage(AppLanguage::french);
    EXPECT_FALSE(offer.isOpen());
}

} // namespace
} // namespace kelpa::test
