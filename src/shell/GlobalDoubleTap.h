// Reports the double tap of the Command key, in whichever program it happens.
#pragma once

#include "platform/GlobalKeys.h"
#include "shell/CommandDoubleTapRecognizer.h"

#include <QObject>

#include <memory>

namespace kelpa {

/// Main thread.
class GlobalDoubleTap : public QObject
{
    Q_OBJECT

public:
    /// `keys` outlives this object.
    explicit GlobalDoubleTap(GlobalKeys& keys);
    ~GlobalDoubleTap() override;

    /// Whether a double tap would be recognised now; initially false.
    bool isAvailable() const { return m_isAvailable; }

Q_SIGNALS:
    void isAvailableChanged();
    /// `inputTime` is the timestamp of the second release.
    void doubleTapped(kelpa::InputTime inputTime);

private:
    void handleModifiers(const GlobalModifierChange& change);
    void setAvailable(bool isAvailable);

    CommandDoubleTapRecognizer m_recognizer;
    bool m_isAvailable = false;
    std::unique_ptr<Subscription> m_subscription;
};

} // namespace kelpa
