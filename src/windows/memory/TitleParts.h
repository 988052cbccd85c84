// The parts of which programs put a title together: "(3) document * - application". For the
// sources beside it.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace kelpa {

/// Of a separator between two parts.
struct SeparatorPlace
{
    qsizetype begin = -1;
    qsizetype length = 0;
};

std::optional<SeparatorPlace> firstSeparator(QStringView title);
std::optional<SeparatorPlace> lastSeparator(QStringView title);
QStringList partsOf(QStringView title);

struct BracketedPart
{
    /// Between the brackets.
    QString inside;
    /// What is left of the title, never empty.
    QString rest;
};

std::optional<BracketedPart> leadingBracket(const QString& title);
std::optional<BracketedPart> trailingBracket(const QString& title);

/// The length of a mark at the beginning of the title, in UTF-16 units: of unsaved changes, of
/// sound, of something new; 0 without one.
qsizetype lengthOfMark(QStringView title);

bool endsWithBracket(QStringView title);

bool hasExtension(const QString& name);

/// A clock, the time played of a song, the length of a call.
bool isTime(const QString& part);
bool isProgress(const QString& part);
/// The page or picture that is shown, of so many.
bool isPosition(const QString& part);
/// Whether it changes by itself: a time, progress, a state.
bool isPassing(const QString& part);

/// The names by which an application may call itself in the titles of its windows.
class ApplicationNames
{
public:
    /// A desktop-entry id or a class, and the name that people read.
    ApplicationNames(const QString& application, const QString& name);

    /// Whether `part` is one of them, perhaps without a word of it or with its maker's name before
    /// it. Version numbers do not matter.
    bool contains(const QString& part) const;

private:
    void add(const QString& name);

    /// Each as words in the folded case.
    QList<QStringList> m_names;
};

} // namespace kelpa
