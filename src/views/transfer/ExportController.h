// The export of the board or of one goal to a file, as QML sees it.
#pragma once

#include "model/Identifiers.h"
#include "text/CopyKey.h"
#include "views/transfer/FileAsking.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

/// Main thread. Does nothing until `setParts`.
class ExportController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// Whether the person is choosing.
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    /// Whether there is nothing more to choose, so that `close` is to follow.
    Q_PROPERTY(bool isEnding READ isEnding NOTIFY changed)
    /// The whole board and its goals, as they were when the choice began.
    Q_PROPERTY(QStringList contentNames READ contentNames NOTIFY changed)
    Q_PROPERTY(QStringList formatNames READ formatNames NOTIFY changed)
    /// What each format is for.
    Q_PROPERTY(QStringList formatNotes READ formatNotes NOTIFY changed)
    /// The rows that are chosen.
    Q_PROPERTY(int content READ content WRITE setContent NOTIFY changed)
    Q_PROPERTY(int format READ format WRITE setFormat NOTIFY changed)
    /// Whether the desktop's dialog shows.
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY changed)
    Q_PROPERTY(bool isWriting READ isWriting NOTIFY changed)
    /// Whether a path has to be typed, since the desktop has no dialog.
    Q_PROPERTY(bool needsPath READ needsPath NOTIFY changed)
    /// Within the home folder.
    Q_PROPERTY(QString suggestedPath READ suggestedPath NOTIFY changed)
    /// Whether the next `start` with the same path replaces the file that is there.
    Q_PROPERTY(bool asksToReplace READ asksToReplace NOTIFY changed)
    /// The key of the text that says why nothing was written; -1 for none.
    Q_PROPERTY(int problem READ problem NOTIFY changed)

public:
    /// `store` outlives the controller.
    explicit ExportController(WindowStore& store, QObject* parent = nullptr);

    void setParts(const TransferParts& parts);

    bool isOpen() const { return m_isOpen; }
    bool isEnding() const { return m_isEnding; }
    QStringList contentNames() const;
    QStringList formatNames() const;
    QStringList formatNotes() const;
    int content() const { return m_content; }
    void setContent(int row);
    int format() const { return m_format; }
    void setFormat(int row);
    bool isAsking() const { return m_asking.isAsking(); }
    bool isWriting() const;
    bool needsPath() const { return m_asking.needsPath(); }
    QString suggestedPath() const;
    bool asksToReplace() const { return !m_existingPath.isEmpty(); }
    int problem() const;

    /// With the goal of that column chosen, or the whole board.
    Q_INVOKABLE void open(const QString& columnID = {});
    Q_INVOKABLE void close();
    /// Asks for the file and writes it; `path` is what was typed where a path is needed.
    Q_INVOKABLE void start(const QString& path = {});
    /// Another path is being typed.
    Q_INVOKABLE void forgetProblem();

Q_SIGNALS:
    void changed();

private:
    /// The file has been written, or could not be.
    void finish(bool isWritten);
    void takeAnswer(const FileAnswer& answer);
    void startTyped(const QString& text);
    void write(const QString& path);
    QString goalTitle() const;

    WindowStore& m_store;
    std::optional<TransferParts> m_parts;
    FileAsking m_asking;
    bool m_isOpen = false;
    bool m_isEnding = false;
    /// Whether the export under way is that of the open sheet. An earlier sheet's goes on after
    /// that sheet was closed.
    bool m_isOwnExport = false;
    /// As `contentNames`, without the first.
    QList<GoalID> m_goals;
    QStringList m_goalTitles;
    int m_content = 0;
    int m_format = 0;
    /// The typed path at which a file is; empty for none.
    QString m_existingPath;
    std::optional<CopyKey> m_problem;
    TaskHandle m_checking;
};

} // namespace kelpa
