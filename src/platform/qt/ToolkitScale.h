// Keeps a PointScale at what the toolkit draws Kelpa with, whatever it derives that from: the
// resolution that the desktop sets, environment variables, the screen.
#pragma once

#include "platform/PointScale.h"

#include <QObject>

#include <functional>
#include <memory>

class QScreen;

namespace kelpa {

/// Main thread, after the application object was created. Follows the primary screen.
class ToolkitScale
{
public:
    /// `changed` is called whenever the scale is another one from now on; may be empty.
    explicit ToolkitScale(std::function<void()> changed);

    /// 1 while there is no screen. May outlive this object.
    std::shared_ptr<const PointScale> scale() const { return m_scale; }

private:
    void follow(QScreen* screen);
    void read(const QScreen& screen);

    const std::shared_ptr<PointScale> m_scale = std::make_shared<PointScale>();
    std::function<void()> m_changed;
    /// The connections to the application, and those to the screen that is followed.
    QObject m_ofApplication;
    std::unique_ptr<QObject> m_ofScreen;
};

} // namespace kelpa
