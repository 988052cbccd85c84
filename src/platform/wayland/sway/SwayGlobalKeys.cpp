#include "platform/wayland/sway/SwayGlobalKeys.h"

#include "platform/wayland/sway/SwayBinding.h"

#include <QSocketNotifier>

#include <chrono>
#include <functional>
#include <optional>

namespace kelpa::wayland {

namespace {

using namespace std::chrono_literals;

constexpr Scheduler::Duration bindingRetryDelay = 2s;
constexpr std::chrono::milliseconds bindingLimit = 2s;

/// Main thread, which waits for nothing but the end of the binding.
class SwayKeySubscription final : public Subscription
{
public:
    SwayKeySubscription(QByteArray socketPath, Scheduler& scheduler, GlobalKeyHandlers handlers,
                        std::function<void(bool)> bound)
        : m_socketPath(std::move(socketPath)), m_scheduler(scheduler),
          m_handlers(std::move(handlers)), m_bound(std::move(bound))
    {
        bind();
    }

private:
    void bind()
    {
        m_binding = m_scheduler.inBackground(
            [path = m_socketPath](const std::stop_token&) {
                return SwayBinding::add(path, std::chrono::steady_clock::now() + bindingLimit);
            },
            [this](std::unique_ptr<SwayBinding> added) { bound(std::move(added)); });
    }

    void bound(std::unique_ptr<SwayBinding> added)
    {
        if (!added) {
            m_binding = m_scheduler.after(bindingRetryDelay, [this] { bind(); });
            return;
        }
        m_added = std::move(added);
        m_notifier = std::make_unique<QSocketNotifier>(m_added->connection().descriptor(),
                                                       QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { process(); });
        m_bound(m_added->isBound());
        if (m_added->isBound())
            setAvailable(true);
        // Events that arrived with the replies do not wake the notifier.
        process();
    }

    void process()
    {
        bool isForgotten = false;
        while (const std::optional<SwayMessage> message = m_added->connection().poll()) {
            const BindingReport report = reportOf(*message);
            if (report == BindingReport::tap)
                reportTap();
            isForgotten = isForgotten || report == BindingReport::forgotten;
        }
        if (isForgotten || m_added->connection().isBroken())
            bindAgain();
    }

    void reportTap()
    {
        // Without a time of its own: sway does not tell when a key changed.
        const std::chrono::duration<double> now = m_scheduler.now().time_since_epoch();
        for (const bool isDown : {true, false}) {
            m_handlers.modifiersChanged({.commandIsDown = isDown,
                                         .hasOtherModifiers = false,
                                         .timestamp = now.count(),
                                         .inputTime = 0});
        }
    }

    void bindAgain()
    {
        m_notifier->setEnabled(false);
        // Its signal may be the one that is being handled.
        m_notifier.release()->deleteLater();
        m_added->forget();
        const bool isLost = m_added->connection().isBroken();
        m_added.reset();
        setAvailable(false);
        if (isLost)
            m_binding = m_scheduler.after(bindingRetryDelay, [this] { bind(); });
        else
            bind();
    }

    void setAvailable(bool isAvailable)
    {
        if (isAvailable != m_isAvailable) {
            m_isAvailable = isAvailable;
            m_handlers.availabilityChanged(isAvailable);
        }
    }

    const QByteArray m_socketPath;
    Scheduler& m_scheduler;
    const GlobalKeyHandlers m_handlers;
    const std::function<void(bool)> m_bound;
    bool m_isAvailable = false;
    std::unique_ptr<SwayBinding> m_added;
    std::unique_ptr<QSocketNotifier> m_notifier;
    /// The binding that is being added, or will be.
    TaskHandle m_binding;
};

} // namespace

std::unique_ptr<Subscription> SwayGlobalKeys::watchKeys(GlobalKeyHandlers handlers)
{
    return std::make_unique<SwayKeySubscription>(m_socketPath, m_scheduler, std::move(handlers),
                                                 m_bound);
}

} // namespace kelpa::wayland
