// The double tap of the Command key, in whatever program it happens.
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
    /// `keys` outlives it.
    explicit GlobalDoubleTap(GlobalKeys& keys);
    ~GlobalDoubleTap() override;

    /// Whether a double tap would be noticed now. At first it would not.
    bool isAvailable() const { return m_isAvailable; }

Q_SIGNALS:
    void isAvailableChanged();
    /// `inputTime` is when the second tap was released.
    void doubleTapped(kelpa::InputTime inputTime);

private:
    void handleModifiers(const GlobalModifierChange& change);
    void setAvailable(bool isAvailable);

    CommandDoubleTapRecognizer m_recognizer;
    bool m_isAvailable = false;
    std::unique_ptr<Subscription> m_subscription;
};

} // namespace kelpa
