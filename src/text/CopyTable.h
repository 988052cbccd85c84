// The texts of one language as a value for views. An object publishes it as a property; a binding
// that reads a text from it is evaluated again when the property changes.
#pragma once

#include "text/KelpaCopy.h"
#include "text/KeyNames.h"

#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>

namespace kelpa {

class CopyTable
{
    Q_GADGET

public:
    CopyTable() = default;
    CopyTable(AppLanguage language, KeyNames keyNames)
        : m_language(language), m_keyNames(std::move(keyNames))
    {}

    AppLanguage language() const { return m_language; }

    /// With the platform's name of the Command key in place of "⌘". Another number than those of
    /// the enumeration ends the program.
    Q_INVOKABLE QString text(kelpa::CopyKey key) const;

    /// The functions of `KelpaCopy` in this language.
    Q_INVOKABLE QString selectWindowsTitle(const QString& goalTitle) const;
    Q_INVOKABLE QString selectedWindowCount(int count) const;
    Q_INVOKABLE QString confirmWindowSelection(int count) const;
    Q_INVOKABLE QString openTodoCount(int count) const;
    Q_INVOKABLE QString completedTodoCount(int count) const;
    Q_INVOKABLE QString windowCount(int count) const;
    Q_INVOKABLE QString foundCounts(int windows, int goals, int todos) const;
    Q_INVOKABLE QString moreInHiddenGoals(int count) const;
    Q_INVOKABLE QString hiddenGoals(int count, int countWithWindows) const;
    Q_INVOKABLE QString onlyMatchesShown(const QString& searchText) const;
    Q_INVOKABLE QString showMoreWindows(int count) const;
    Q_INVOKABLE QString dropInto(const QString& title) const;
    Q_INVOKABLE QString dropBefore(const QString& title) const;
    Q_INVOKABLE QString textTooLong(int limit) const;
    Q_INVOKABLE QString makeTodos(int count) const;
    Q_INVOKABLE QString windowName(const QString& ownerName, const QString& title) const;
    Q_INVOKABLE QString windowsFromLastTime(int count) const;
    Q_INVOKABLE QString closedWindows(int count) const;
    Q_INVOKABLE QString wasIn(const QStringList& goalTitles) const;
    Q_INVOKABLE QString onVirtualDesktop(const QString& desktop) const;
    Q_INVOKABLE QString movedAsideTo(const QString& name) const;

    /// `status` and `priority` are stored texts; an unknown one gives an empty text.
    Q_INVOKABLE QString statusName(const QString& status) const;
    Q_INVOKABLE QString statusHelp(const QString& status) const;
    Q_INVOKABLE QString nextStatus(const QString& next) const;
    Q_INVOKABLE QString statusAccessibilityLabel(const QString& status) const;
    Q_INVOKABLE QString priorityName(const QString& priority) const;
    Q_INVOKABLE QString priorityAccessibilityLabel(const QString& priority) const;

    /// The keys of the board, and at the same places what they do.
    Q_INVOKABLE QStringList keyHelpKeys(bool isDoubleTapOffered, bool canWorkOnGoals,
                                        bool canPinGoals) const;
    Q_INVOKABLE QStringList keyHelpMeanings(bool isDoubleTapOffered, bool canWorkOnGoals,
                                            bool canPinGoals) const;
    Q_INVOKABLE QString newGoalKeys() const;
    Q_INVOKABLE QString undoKeys() const;
    Q_INVOKABLE QString redoKeys() const;
    Q_INVOKABLE QString helpKeys() const;
    Q_INVOKABLE QString makeTodosKeys() const;
    Q_INVOKABLE QString quitKeys() const;
    Q_INVOKABLE QString renameKeys() const;
    Q_INVOKABLE QString deleteTodoKeys() const;
    Q_INVOKABLE QString moveLeftKeys() const;
    Q_INVOKABLE QString moveRightKeys() const;
    Q_INVOKABLE QString moveUpKeys() const;
    Q_INVOKABLE QString moveDownKeys() const;
    Q_INVOKABLE QString workKeys() const;
    Q_INVOKABLE QString goBackKeys() const;

    friend bool operator==(const CopyTable&, const CopyTable&) = default;

private:
    AppLanguage m_language = allAppLanguages.front();
    KeyNames m_keyNames;
};

} // namespace kelpa
