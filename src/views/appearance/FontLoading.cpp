#include "views/appearance/FontLoading.h"

#include "views/appearance/ViewSettings.h"

#include <QFont>
#include <QFontInfo>
#include <QGlyphRun>
#include <QList>
#include <QTextLayout>

#include <vector>

namespace kelpa {

namespace {

/// A font of the theme with texts that the board shows in it at once.
struct FirstFont
{
    int size;
    QFont::Weight weight;
    std::vector<CopyKey> texts;
    /// What titles and numbers consist of.
    QString letters{};
};

std::vector<FirstFont> firstFonts()
{
    using enum CopyKey;
    const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyz");
    const QString digits = QStringLiteral("0123456789");
    return {
        {13, QFont::Normal, {SearchWindowsOrApps, HideEmpty, ShowAll, Language, Subtitle}, letters},
        {13, QFont::DemiBold, {NewGoal, AddGoal, AllTodos, Unsorted}, letters},
        {11, QFont::Normal, {KeyboardHint, AllTodosSubtitle}, letters},
        {11, QFont::Medium, {}, letters + digits},
        {22, QFont::Bold, {ProductName}},
    };
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

} // namespace

void loadFonts(const ViewSettings& settings, const std::function<void()>& between)
{
    for (const FirstFont& first : firstFonts()) {
        const QFont font = settings.font(settings.fontFamilies(), first.size, first.weight);
        between();
        layOut(first.letters, font);
        for (const CopyKey key : first.texts) {
            between();
            layOut(settings.copy().text(key), font);
        }
    }
}

} // namespace kelpa
