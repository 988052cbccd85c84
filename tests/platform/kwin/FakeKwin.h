// A KWin on a private bus, as far as Kelpa speaks with it: it loads scripts without running them,
// and says to Kelpa what a test wants in their place.
#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace kelpa::test {

/// Main thread, whose event loop runs.
class FakeKwin final : public QDBusVirtualObject
{
public:
    explicit FakeKwin(const QString& busAddress);
    ~FakeKwin() override;

    /// Takes the name that KWin has, and that of KGlobalAccel, which is within KWin.
    void appear();
    /// Takes the first of them alone.
    void appearWithoutShortcuts();
    void takeShortcuts();
    /// Plasma's shell takes its name and its actions have their keys, or it gives both up.
    void startShell();
    void endShell();

    /// The report that a script makes when it is run; absent for none.
    std::optional<QByteArray> firstReport{"[]"};
    /// Whether calls get no reply.
    bool isSilent = false;
    /// Whether it is older than Plasma 6.
    bool isOld = false;
    /// The keys of the launcher of Plasma's shell, as Qt numbers them, whether or not it runs.
    QList<int> launcherKeys;
    /// How often it was asked for them.
    int keyRequests = 0;
    /// Whether running a script reaches another one, so that only "start" does.
    bool mixesNumbers = false;
    /// Whether loading a script is refused.
    bool refusesScripts = false;
    /// The names of loaded scripts, and of all that were ever loaded.
    QStringList loaded;
    QStringList everLoaded;
    QStringList unloaded;
    /// The name of the error that requests for pictures get; empty for a picture.
    QString pictureError;
    /// The same for a picture of a part of a screen.
    QString areaError;
    /// The size of the last one, in points.
    QSize area;
    QVariantMap picture;
    QByteArray pictureBytes;
    /// Whether the pipe stays open after them.
    bool holdsPipe = false;
    int pictures = 0;
    /// The UUID of a window that is not shown: its picture comes with the next frame that is asked
    /// for.
    QString hiddenWindow;
    int frames = 0;
    /// The pixel of the last one.
    QPoint pixel;
    /// Whether requests for a pixel get no reply, though it draws.
    bool holdsPixels = false;
    /// The UUID of a window that gives no picture, though it draws.
    QString silentWindow;
    /// Whether no request for a picture gets an answer, as while it draws nothing.
    bool holdsPictures = false;
    /// Draws again after that: pixels that were asked for get their answers.
    void draw();

    /// Reports as the script does; with another token where one is given.
    void report(const QByteArray& text, const QString& token = {});
    /// The places of the screens that all reports tell; empty for none.
    QByteArray screens;
    /// Asks for orders as the script does; the replies are in `orders`.
    void askForOrders();
    QStringList orders;
    /// Presses the script's shortcut; with another token where one is given.
    void bringForward(const QString& token = {});
    /// KGlobalAccel's word, which KWin gives too, that an action of that component was called by
    /// its key.
    void useShortcut(const QString& component, const QString& action);
    /// Of the last report, and the number of its replies.
    QString reportError;
    int reportReplies = 0;

    QString kelpa() const { return m_kelpa; }
    QString token() const { return m_token; }

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    std::optional<QVariantList> answerOf(const QDBusMessage& message);
    std::optional<QVariantList> answerOfShortcuts(const QDBusMessage& message);
    int load(const QString& file, const QString& plugin);
    bool isOfScript(const QString& path) const;
    void run();
    bool answerFrame(const QDBusMessage& message, const QDBusConnection& connection);
    void answerPixel(const QDBusMessage& message, const QDBusConnection& connection) const;
    bool answerPicture(const QDBusMessage& message, const QDBusConnection& connection);

    const QString m_name;
    QDBusConnection m_connection;
    QString m_kelpa;
    QString m_token;
    bool m_isShellActive = false;
    int m_heldPipe = -1;
    std::optional<QDBusMessage> m_heldPicture;
    QList<QDBusMessage> m_heldPixels;
};

/// Calls Kelpa's object for its script from a connection that is not KWin's; the name of the error.
QString errorForStranger(const QString& busAddress, const QString& kelpa, const QString& token);

} // namespace kelpa::test
