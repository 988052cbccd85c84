#include "automation/Listings.h"

#include "automation/Methods.h"
#include "model/Text.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace kelpa::automation {

namespace {

/// Enough to name one of a board by.
constexpr qsizetype shortIDLength = 8;

template <class Record>
qsizetype idLength(const QList<Record>& records)
{
    QSet<QString> beginnings;
    for (const Record& record : records)
        beginnings.insert(record.id.text().left(shortIDLength));
    constexpr qsizetype whole = 36;
    return beginnings.size() == records.size() ? shortIDLength : whole;
}

QString boxOf(TodoStatus status)
{
    switch (status) {
    case TodoStatus::todo:
        return QStringLiteral("[ ]");
    case TodoStatus::ing:
        return QStringLiteral("[~]");
    case TodoStatus::completed:
        return QStringLiteral("[x]");
    }
    Q_UNREACHABLE();
}

class GoalTitles
{
public:
    explicit GoalTitles(const QList<GoalRecord>& goals)
    {
        for (const GoalRecord& goal : goals)
            m_titles.insert(goal.id, singleLine(goal.title));
    }

    /// What follows a record of the goal; empty for "Unsorted".
    QString behind(const std::optional<GoalID>& goal) const
    {
        return goal ? QStringLiteral("  (%1)").arg(m_titles.value(*goal)) : QString();
    }

private:
    QHash<GoalID, QString> m_titles;
};

} // namespace

QString listing(const QList<GoalRecord>& goals)
{
    const qsizetype length = idLength(goals);
    QString text;
    for (const GoalRecord& goal : goals) {
        text += goal.id.text().left(length) + QStringLiteral("  ") + rawValue(goal.priority) +
                QStringLiteral("  %1  ").arg(goal.openTodos, 4) + singleLine(goal.title) + u'\n';
    }
    return text;
}

QString listing(const QList<TodoRecord>& todos, const QList<GoalRecord>& goals)
{
    const GoalTitles titles(goals);
    const qsizetype length = idLength(todos);
    QString text;
    for (const TodoRecord& todo : todos) {
        text += todo.id.text().left(length) + QStringLiteral("  ") + boxOf(todo.status) +
                QStringLiteral("  ") + singleLine(todo.title) + titles.behind(todo.goal) + u'\n';
    }
    return text;
}

QString listing(const QList<WindowRecord>& windows, const QList<GoalRecord>& goals)
{
    const GoalTitles titles(goals);
    QString text;
    for (const WindowRecord& window : windows) {
        text += QString::number(window.id).rightJustified(6) + QStringLiteral("  ") +
                singleLine(window.application) + QStringLiteral("  ") + singleLine(window.title) +
                titles.behind(window.goal) + u'\n';
    }
    return text;
}

QString json(const Reply& reply)
{
    const QVariantList arguments = toWire(reply);
    QJsonDocument document{QJsonObject()};
    if (std::holds_alternative<Added>(reply)) {
        document.setObject({{QStringLiteral("id"), arguments.constFirst().toString()}});
    } else if (!arguments.isEmpty()) {
        QJsonArray array;
        for (const QVariantMap& map : arguments.constFirst().value<QList<QVariantMap>>())
            array.append(QJsonObject::fromVariantMap(map));
        document.setArray(array);
    }
    return QString::fromUtf8(document.toJson());
}

} // namespace kelpa::automation
