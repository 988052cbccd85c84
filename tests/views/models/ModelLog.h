// Records the signals of a list model as texts, while Qt's model tester checks each of them.
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
                    record(QStringLiteral("insert %1-%2").arg(first).arg(last));
                });
        connect(&model, &Model::rowsRemoved, this, [this](const QModelIndex&, int first, int last) {
            record(QStringLiteral("remove %1-%2").arg(first).arg(last));
        });
        connect(&model, &Model::rowsMoved, this,
                [this](const QModelIndex&, int first, int, const QModelIndex&, int before) {
                    record(QStringLiteral("move %1 before %2").arg(first).arg(before));
                });
        connect(&model, &Model::dataChanged, this,
                [this](const QModelIndex& first, const QModelIndex& last) {
                    record(QStringLiteral("change %1-%2").arg(first.row()).arg(last.row()));
                });
        connect(&model, &Model::modelReset, this, [this] { record(QStringLiteral("reset")); });
        connect(&model, &Model::layoutChanged, this, [this] { record(QStringLiteral("layout")); });
    }

    /// The texts since the last call.
    QStringList take() { return std::exchange(m_entries, {}); }

private:
    void record(const QString& entry) { m_entries.append(entry); }

    QAbstractItemModelTester m_tester;
    QStringList m_entries;
};

/// The value of the role that has that name in QML.
inline QVariant value(const QAbstractItemModel& model, int row, const char* role)
{
    return model.index(row, 0).data(model.roleNames().key(role));
}

/// The values of a role in all rows, as texts.
inline QStringList texts(const QAbstractItemModel& model, const char* role)
{
    QStringList result;
    for (int row = 0; row < model.rowCount(); ++row)
        result.append(value(model, row, role).toString());
    return result;
}

} // namespace kelpa::test
