// Says what the desktop lacks of what Kelpa needs, why, and what a person can do about it.
#pragma once

#include "text/CopyKey.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <cstdint>
#include <optional>

namespace kelpa {

class WindowStore;
struct DesktopAbilities;

/// The most important thing that is missing; what is missed in one place only is said there.
struct DesktopNoticeTexts
{
    CopyKey heading;
    /// Why, and the step that mends it.
    CopyKey text;
    /// The button that mends it; absent where the person has to see to it elsewhere.
    std::optional<CopyKey> remedy{};

    friend bool operator==(const DesktopNoticeTexts&, const DesktopNoticeTexts&) = default;
};

/// Whether Kelpa can request from the desktop what is missing.
enum class AbilityRequests : std::uint8_t { possible, impossible };

/// Absent when nothing has to be said above the board.
std::optional<DesktopNoticeTexts>
desktopNoticeTexts(const DesktopAbilities& abilities,
                   AbilityRequests requests = AbilityRequests::impossible);

/// Follows a store. Main thread.
class DesktopNotice : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    // Keys of texts; -1 while it is not open.
    Q_PROPERTY(int heading READ heading NOTIFY changed)
    Q_PROPERTY(int text READ text NOTIFY changed)
    // That of the button that mends it; -1 where there is none.
    Q_PROPERTY(int remedy READ remedy NOTIFY changed)
    /// Whether the desktop is known not to tell of a double tap of Command.
    Q_PROPERTY(bool lacksDoubleTap READ lacksDoubleTap NOTIFY changed)

public:
    /// `store` outlives the notice.
    explicit DesktopNotice(WindowStore& store);

    bool isOpen() const { return m_texts && m_texts != m_dismissed; }
    int heading() const { return isOpen() ? static_cast<int>(m_texts->heading) : -1; }
    int text() const { return isOpen() ? static_cast<int>(m_texts->text) : -1; }
    int remedy() const
    {
        return isOpen() && m_texts->remedy ? static_cast<int>(*m_texts->remedy) : -1;
    }
    bool lacksDoubleTap() const;

    /// Requests from the desktop what is missing; the notice follows what comes of it.
    Q_INVOKABLE void mend();
    /// The person has read it: it stays away until something else is missing, or the next start.
    Q_INVOKABLE void dismiss();
    /// Copies the command that a key of the desktop can run in place of the double tap.
    Q_INVOKABLE void copyCommand();

Q_SIGNALS:
    void changed();

private:
    std::optional<DesktopNoticeTexts> currentTexts() const;
    void update();

    WindowStore& m_store;
    std::optional<DesktopNoticeTexts> m_texts;
    std::optional<DesktopNoticeTexts> m_dismissed;
};

} // namespace kelpa
