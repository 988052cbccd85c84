#include "windows/memory/WindowKeys.h"

#include "windows/memory/CommonTitles.h"
#include "windows/memory/TitleParts.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace kelpa {

namespace {

/// Longer names, roles and identifiers are no longer than this by accident; they are cut.
constexpr qsizetype longestName = 200;
/// The beginning of a longer document does not identify it, so it is not remembered.
constexpr qsizetype longestDocument = 1000;

/// Between the parts of a key, where no trait has it.
constexpr QChar divider(u'\x1f');

QString shortened(const QString& text)
{
    return visibleText(text).left(longestName);
}

bool isVisible(QChar each)
{
    const QChar::Category category = each.category();
    return category != QChar::Other_Control && category != QChar::Other_Format;
}

/// A path for a local file, otherwise the address without the place within the page.
QString documentIdentity(const QString& document)
{
    QString text = document.trimmed();
    if (text.startsWith(u'/'))
        return text;
    const QUrl url(text);
    if (url.isLocalFile())
        return url.toLocalFile();
    return text.section(u'#', 0, 0);
}

/// An empty page, or a folder that every new window shows.
bool isCommonDocument(const QString& document)
{
    static const QRegularExpression common(QStringLiteral(
        R"(^(about:.*|data:.*|(chrome|edge|brave|vivaldi|opera|moz-extension|chrome-extension)://.*|)"
        R"(/|/root/?|/home/[^/]+/?)$)"));
    return common.match(document).hasMatch();
}

QString joined(std::initializer_list<QString> parts)
{
    const bool isComplete =
        std::ranges::none_of(parts, [](const QString& part) { return part.isEmpty(); });
    return isComplete ? QStringList(parts).join(divider) : QString();
}

WindowTraits rawTraits(const WindowItem& window)
{
    return {window.bundleIdentifier.value_or(window.ownerName),
            window.ownerName,
            window.role,
            window.sessionID,
            window.accessibilityDocument.value_or(QString()),
            window.title,
            window.instance};
}

/// "Page — Browser (Private Browsing)", "Page - [InPrivate] - Browser".
bool hasPrivateEnd(const WindowTraits& traits)
{
    const QStringList parts = partsOf(traits.title);
    const PrivateEnd last = privateEnd(parts.back());
    if (last.isPrivate && !last.rest.isEmpty() &&
        (namesBrowser(last.rest) ||
         ApplicationNames(traits.application, traits.applicationName).contains(last.rest)))
        return true;
    return std::ranges::any_of(parts.cbegin() + 1, parts.cend(), [](const QString& part) {
        const PrivateEnd end = privateEnd(part);
        return end.isBracketedName && end.rest.isEmpty();
    });
}

/// Whether one of the names by which a program tells its windows apart says so.
bool saysPrivate(const QStringList& names)
{
    const QString joinedNames = names.join(divider);
    return namesPrivateBrowsing(joinedNames) || hasPrivateWord(joinedNames);
}

} // namespace

Privacy privacyOf(const WindowTraits& traits)
{
    if (saysPrivate({traits.application, traits.role, traits.instance}))
        return Privacy::said;
    const bool isInTitle = namesPrivateBrowsing(traits.title + divider + traits.applicationName);
    const bool isBracketed = endsWithBracket(traits.title);
    if ((isInTitle || isBracketed) && hasPrivateEnd(traits))
        return Privacy::said;
    const bool isInDocument =
        traits.document.startsWith(QStringLiteral("about:privatebrowsing"), Qt::CaseInsensitive);
    return isInTitle || isInDocument ? Privacy::mentioned : Privacy::none;
}

Privacy privacyOf(const WindowItem& window)
{
    // Its application may be known by its process, under another name.
    if (saysPrivate({window.windowClass}))
        return Privacy::said;
    WindowTraits traits = rawTraits(window);
    // Browsers say so at the end of the title.
    if (traits.title.size() > 2 * longestTitle)
        traits.title = traits.title.left(longestTitle) + traits.title.right(longestTitle);
    return privacyOf(traits);
}

WindowTraits traitsOf(const WindowItem& window)
{
    return boundedTraits(rawTraits(window));
}

WindowTraits boundedTraits(const WindowTraits& traits)
{
    QString document = traits.document.trimmed();
    if (document.size() > longestDocument || !std::ranges::all_of(document, isVisible))
        document.clear();
    return {shortened(traits.application),
            shortened(traits.applicationName),
            shortened(traits.role),
            shortened(traits.sessionID),
            document,
            visibleText(traits.title),
            shortened(traits.instance)};
}

WindowKeys keysOf(const WindowTraits& traits)
{
    WindowKeys keys;
    keys.application = traits.application;
    keys.title = titleIdentity(traits.title, traits.application, traits.applicationName);
    keys.document = documentIdentity(traits.document);
    if (isCommonDocument(keys.document))
        keys.document.clear();
    keys.hasNumberedRole =
        std::ranges::any_of(traits.role, [](QChar each) { return each.isDigit(); });
    const QString title = keys.title.saysNothing ? QString() : keys.title.text;
    // All windows of a client have one instance, so that it says nothing beside the session.
    const QString& part = traits.role.isEmpty() ? traits.instance : traits.role;
    keys.texts = {joined({traits.application, traits.sessionID, traits.role}),
                  joined({traits.application, keys.document}),
                  joined({traits.application, part, title}), joined({traits.application, title})};
    return keys;
}

bool isShared(const SharedTraits& shared, WindowKey key)
{
    switch (key) {
    case WindowKey::session:
        return shared.session;
    case WindowKey::document:
        return shared.document;
    case WindowKey::roleAndTitle:
    case WindowKey::title:
        return shared.title;
    }
    return true;
}

void share(SharedTraits& shared, WindowKey key)
{
    switch (key) {
    case WindowKey::session:
        shared.session = true;
        break;
    case WindowKey::document:
        shared.document = true;
        break;
    case WindowKey::roleAndTitle:
    case WindowKey::title:
        shared.title = true;
        break;
    }
}

} // namespace kelpa
