#include "views/appearance/FontLoading.h"

#include "views/appearance/ViewSettings.h"

#include <QFont>
#include <QFontInfo>
#include <QGlyphRun>
#include <QList>
#include <QTextLayout>

#include <initializer_list>
#include <vector>

namespace kelpa {

namespace {

/// A font of the theme with texts that the board shows in it at once.
struct FirstFont
{
    int size;
    QFont::Weight weight;
    QStringList texts;
};

QStringList textsOf(const ViewSettings& settings, std::initializer_list<CopyKey> keys)
{
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(keys.size()));
    for (const CopyKey key : keys)
        texts.append(settings.copy().text(key));
    return texts;
}

std::vector<FirstFont> firstFonts(const ViewSettings& settings, const FirstBoard& board)
{
    using enum CopyKey;
    const QString digits = QStringLiteral("0123456789");
    const QString alphabet = QStringLiteral("abcdefghijklmnopqrstuvwxyz");
    // What titles and numbers consist of.
    const QStringList letters{alphabet, alphabet.toUpper(), digits};
    std::vector<FirstFont> fonts{
        {13, QFont::Normal,
         letters +
             textsOf(settings, {SearchWindowsOrApps, HideEmpty, ShowAll, Language, Subtitle})},
        {13, QFont::DemiBold, letters + textsOf(settings, {NewGoal, AddGoal, AllTodos, Unsorted})},
        {11, QFont::Normal, letters + textsOf(settings, {KeyboardHint, AllTodosSubtitle})},
        {11, QFont::Medium, letters},
        {22, QFont::Bold, textsOf(settings, {ProductName})},
    };
    fonts[0].texts += board.offeredLanguages;
    if (board.hasFirstSteps) {
        fonts[0].texts += textsOf(settings, {FirstStepWindow, DoubleTapHint, CreateGoalPlaceholder,
                                             NoTodosYet, UnsortedHint, AddFirstGoalHint});
        fonts[1].texts += textsOf(settings, {FirstStepGoal});
        fonts.push_back({11, QFont::DemiBold, {digits}});
    }
    return fonts;
}

QFont fontOf(const ViewSettings& settings, const FirstFont& first)
{
    return settings.font(settings.fontFamilies(), first.size, first.weight, settings.textScale());
}

/// Asks for all that an item of the views will: the font itself, which the toolkit loads for each
/// script, the places of the letters, and how far each extends.
void layOut(const QString& text, const QFont& font)
{
    QFontInfo(font).weight();
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun& run : runs)
        run.boundingRect();
}

/// False once the scale of texts is another.
bool loadFontsOfScale(const ViewSettings& settings, double scale, const FirstBoard& board,
                      const std::function<void()>& between)
{
    for (const FirstFont& first : firstFonts(settings, board)) {
        const QFont font = fontOf(settings, first);
        for (const QString& text : first.texts) {
            between();
            if (settings.textScale() != scale)
                return false;
            layOut(text, font);
        }
    }
    return true;
}

} // namespace

QList<QFont> fontsOfFirstFrame(const ViewSettings& settings, const FirstBoard& board)
{
    const std::vector<FirstFont> all = firstFonts(settings, board);
    QList<QFont> fonts;
    fonts.reserve(static_cast<qsizetype>(all.size()));
    for (const FirstFont& first : all)
        fonts.append(fontOf(settings, first));
    return fonts;
}

void loadFonts(const ViewSettings& settings, const FirstBoard& board,
               const std::function<void()>& between)
{
    // The desktop may say how large its texts are while this is done.
    while (!loadFontsOfScale(settings, settings.textScale(), board, between)) {
    }
}

} // namespace kelpa
