// What a list model announces, as texts in the order of its signals, while a tester of Qt's looks
// at every one of them.
#pragma once

#include <QAbstractItemModel>
#include <QAbstractItemModelTester>
#include <QString>
#include <QStringList>

#include <utility>

namespace kelpa::test {

class ModelLog : public QObject
{
public:
    explicit ModelLog(QAbstractItemModel& model)
        : m_tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        using Model = QAbstractItemModel;
        connect(&model, &Model::rowsInserted, this,
                [this](const QModelIndex&, int first, int last) {
                    note(QStringLiteral("insert %1-%2").arg(first).arg(last));
                });
        connect(&model, &Model::rowsRemoved, this, [this](const QModelIndex&, int first, int last) {
            note(QStringLiteral("remove %1-%2").arg(first).arg(last));
        });
        connect(&model, &Model::rowsMoved, this,
                [this](const QModelIndex&, int first, int, const QModelIndex&, int before) {
                    note(QStringLiteral("move %1 before %2").arg(first).arg(before));
                });
        connect(&model, &Model::dataChanged, this,
                [this](const QModelIndex& first, const QModelIndex& last) {
                    note(QStringLiteral("change %1-%2").arg(first.row()).arg(last.row()));
                });
        connect(&model, &Model::modelReset, this, [this] { note(QStringLiteral("reset")); });
        connect(&model, &Model::layoutChanged, this, [this] { note(QStringLiteral("layout")); });
    }

    /// Since the last call.
    QStringList take() { return std::exchange(m_entries, {}); }

private:
    void note(const QString& entry) { m_entries.append(entry); }

    QAbstractItemModelTester m_tester;
    QStringList m_entries;
};

/// The value of a role, by the name that QML knows it by.
inline QVariant value(const QAbstractItemModel& model, int row, const char* role)
{
    return model.index(row, 0).data(model.roleNames().key(role));
}

/// The values of all rows as texts.
inline QStringList texts(const QAbstractItemModel& model, const char* role)
{
    QStringList result;
    for (int row = 0; row < model.rowCount(); ++row)
        result.append(value(model, row, role).toString());
    return result;
}

} // namespace kelpa::test
