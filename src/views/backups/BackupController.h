// The backups among which a person chooses one to restore, as QML sees them.
#pragma once

#include "store/BackupBrowser.h"
#include "views/models/RowListModel.h"

#include <QString>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class BackupBrowser;
class WindowStore;

struct BackupRow
{
    /// Names the backup.
    QString name;
    /// When the board was so, in the person's language and local time.
    QString title;
    /// How much it holds, or why that is not known.
    QString counts;
    /// Why it was made; empty for the one of a day.
    QString note;
    QStringList goalTitles;
    /// The number of open todos of each of these goals.
    QStringList goalCounts;
    bool isReadable = false;

    QString key() const { return name; }

    friend bool operator==(const BackupRow&, const BackupRow&) = default;
};

/// Main thread. Empty until `setBrowser`.
class BackupController : public RowListModel<BackupRow>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// Whether the program has backups at all.
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY changed)
    /// Whether the person is choosing.
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// False until the list has been read.
    Q_PROPERTY(bool isRead READ isRead NOTIFY changed)
    Q_PROPERTY(bool isRestoring READ isRestoring NOTIFY changed)
    /// The restoration waits until the disk has the board.
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY changed)
    /// Grows whenever the board has become that of a backup.
    Q_PROPERTY(int restorationCount READ restorationCount NOTIFY changed)
    /// The key of the text that says why nothing was restored; -1 for none.
    Q_PROPERTY(int refusal READ refusal NOTIFY changed)

public:
    /// `store` outlives the controller.
    explicit BackupController(const WindowStore& store, QObject* parent = nullptr);

    /// `browser` outlives the controller.
    void setBrowser(BackupBrowser& browser);

    bool isOffered() const { return m_browser != nullptr; }
    bool isOpen() const { return m_isOpen; }
    int count() const { return rowCount(); }
    bool isRead() const;
    bool isRestoring() const;
    bool isSaving() const;
    int restorationCount() const { return m_restorationCount; }
    int refusal() const;

    Q_INVOKABLE void open();
    /// What is being restored by then leaves the board as it is.
    Q_INVOKABLE void close();
    /// The same, while the person still sees the backups.
    Q_INVOKABLE void cancel();
    /// Any other row than those that can be read does nothing.
    Q_INVOKABLE void restore(int row);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void changed();

private:
    void update();

    const WindowStore& m_store;
    BackupBrowser* m_browser = nullptr;
    bool m_isOpen = false;
    int m_restorationCount = 0;
};

} // namespace kelpa
