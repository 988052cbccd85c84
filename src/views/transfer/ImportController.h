// The import of a file into the board, as QML sees it: what would come, and how.
#pragma once

#include "text/CopyKey.h"
#include "views/transfer/FileAsking.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

/// Main thread. Does nothing until `setParts`.
class ImportController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// Whether the person is choosing.
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    /// Whether there is nothing more to choose, so that `close` is to follow.
    Q_PROPERTY(bool isEnding READ isEnding NOTIFY changed)
    /// Whether the desktop's dialog shows.
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY changed)
    /// Whether a path has to be typed, since the desktop has no dialog.
    Q_PROPERTY(bool needsPath READ needsPath NOTIFY changed)
    Q_PROPERTY(bool isReading READ isReading NOTIFY changed)
    Q_PROPERTY(bool isImporting READ isImporting NOTIFY changed)
    /// The import waits until the disk has the board.
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY changed)
    /// Whether a file has been read, which the properties below describe.
    Q_PROPERTY(bool isRead READ isRead NOTIFY changed)
    /// The name of the file, and its format.
    Q_PROPERTY(QString fileText READ fileText NOTIFY changed)
    Q_PROPERTY(QString counts READ counts NOTIFY changed)
    Q_PROPERTY(QStringList goalTitles READ goalTitles NOTIFY changed)
    /// The number of open todos of each of these goals.
    Q_PROPERTY(QStringList goalCounts READ goalCounts NOTIFY changed)
    /// Some of the todos' titles.
    Q_PROPERTY(QStringList firstTodos READ firstTodos NOTIFY changed)
    /// How many lines are left out, empty where none is; and the first of them with the reason.
    Q_PROPERTY(QString leftOutText READ leftOutText NOTIFY changed)
    Q_PROPERTY(QStringList leftOut READ leftOut NOTIFY changed)
    /// The key of the text that says why nothing was read or imported; -1 for none.
    Q_PROPERTY(int problem READ problem NOTIFY changed)

public:
    /// `store` outlives the controller.
    explicit ImportController(const WindowStore& store, QObject* parent = nullptr);

    void setParts(const TransferParts& parts);

    bool isOpen() const { return m_isOpen; }
    bool isEnding() const { return m_isEnding; }
    bool isAsking() const { return m_asking.isAsking(); }
    bool needsPath() const { return m_asking.needsPath(); }
    bool isReading() const;
    bool isImporting() const;
    bool isSaving() const;
    bool isRead() const;
    QString fileText() const;
    QString counts() const;
    QStringList goalTitles() const;
    QStringList goalCounts() const;
    QStringList firstTodos() const;
    QString leftOutText() const;
    QStringList leftOut() const;
    int problem() const;

    /// Asks for a file at once.
    Q_INVOKABLE void open();
    /// What is being imported by then leaves the board as it is.
    Q_INVOKABLE void close();
    /// Asks for another file.
    Q_INVOKABLE void choose();
    /// Reads the file of a typed path.
    Q_INVOKABLE void readPath(const QString& text);
    Q_INVOKABLE void addToBoard();
    Q_INVOKABLE void replaceBoard();

Q_SIGNALS:
    void changed();

private:
    void end();
    void takeAnswer(const FileAnswer& answer);
    void read(const QString& path);

    const WindowStore& m_store;
    std::optional<TransferParts> m_parts;
    FileAsking m_asking;
    bool m_isOpen = false;
    bool m_isEnding = false;
    QString m_path;
    std::optional<CopyKey> m_problem;
};

} // namespace kelpa
