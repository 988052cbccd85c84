#include "platform/wayland/capture/WindowPictures.h"

#include "platform/wayland/connection/LocalSocket.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kelpa::wayland {

bool arePicturesAmong(const GlobalVersions& globals)
{
    constexpr std::array needed{
        "wl_shm",
        "ext_foreign_toplevel_list_v1",
        "ext_foreign_toplevel_image_capture_source_manager_v1",
        "ext_image_copy_capture_manager_v1",
    };
    return std::ranges::all_of(needed, [&](const char* each) { return globals.contains(each); });
}

/// A connection, and what is known over it.
struct WindowPictures::Link
{
    Link(std::unique_ptr<WaylandConnection> opened, const CaptureLimits& limits, int waker)
        : connection(std::move(opened)), client(*connection, limits, waker)
    {}

    std::unique_ptr<WaylandConnection> connection;
    CaptureClient client;
};

WindowPictures::WindowPictures(QByteArray path, const CaptureLimits& limits,
                               std::chrono::milliseconds idleLimit)
    : m_path(std::move(path)), m_limits(limits), m_idleLimit(idleLimit),
      m_waker(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      m_thread([this](const std::stop_token& stop) { run(stop); })
{}

WindowPictures::~WindowPictures()
{
    m_thread.request_stop();
    wake();
}

bool WindowPictures::areOffered() const
{
    const std::scoped_lock lock(m_mutex);
    return m_areOffered;
}

std::unique_ptr<Subscription> WindowPictures::watchOffer(std::function<void()> changed)
{
    return m_offers.subscribe(std::move(changed), EarlierEvents::notified);
}

std::optional<WindowCapture> WindowPictures::capture(const PictureRequest& request,
                                                     const std::stop_token& stop)
{
    const std::scoped_lock turn(m_turn);
    const auto job = std::make_shared<Job>(Job{.request = request});
    std::unique_lock lock(m_mutex);
    m_job = job;
    wake();
    m_jobChanged.wait(lock, stop, [&] { return job->isDone; });
    if (job->isDone)
        return std::move(job->picture);
    job->isGivenUp = true;
    m_job.reset();
    wake();
    return std::nullopt;
}

void WindowPictures::run(const std::stop_token& stop)
{
    using Clock = std::chrono::steady_clock;
    // Before anybody wants one: the board says where there are none.
    std::unique_ptr<Link> link = connected(stop);
    Clock::time_point idleEnd = Clock::now() + m_idleLimit;
    Clock::time_point asked = Clock::now();
    while (!stop.stop_requested()) {
        const std::shared_ptr<Job> job = currentJob();
        // Nobody wants pictures that are not offered, so the question waits for no job.
        if (!link &&
            (areOffered() ? job != nullptr : Clock::now() - asked >= m_limits.askAgainDelay)) {
            link = connected(stop);
            asked = Clock::now();
            idleEnd = asked + m_idleLimit;
        }
        if (job) {
            const auto isStopped = [&] {
                clearWaker();
                const std::scoped_lock lock(m_mutex);
                return job->isGivenUp || stop.stop_requested();
            };
            finish(*job, link ? link->client.capture(job->request, isStopped) : std::nullopt);
            idleEnd = Clock::now() + m_idleLimit;
        } else if (link) {
            const DispatchEnd end = link->connection->dispatch(idleEnd, m_waker.number());
            // A compositor that never stops sending lets no wait time out.
            if (end == DispatchEnd::timedOut || Clock::now() >= idleEnd)
                link.reset();
            clearWaker();
        } else {
            pollfd waker{.fd = m_waker.number(), .events = POLLIN, .revents = 0};
            ::poll(&waker, 1,
                   areOffered() ? -1 : millisecondsUntil(asked + m_limits.askAgainDelay));
            clearWaker();
        }
        if (link) {
            const bool isOver = link->connection->isBroken() || link->client.isFinished();
            if (!link->connection->isBroken())
                noteOffer(link->client.isOffering());
            if (isOver || !link->client.isOffering())
                link.reset();
        }
    }
    if (const std::shared_ptr<Job> job = currentJob())
        finish(*job, std::nullopt);
}

std::unique_ptr<WindowPictures::Link> WindowPictures::connected(const std::stop_token& stop)
{
    std::unique_ptr<WaylandConnection> connection = WaylandConnection::open(m_path);
    if (!connection)
        return nullptr;
    auto link = std::make_unique<Link>(std::move(connection), m_limits, m_waker.number());
    // One that does not reply now may do so when it is asked again.
    if (!link->client.setUp([&] {
            clearWaker();
            return stop.stop_requested();
        }))
        return nullptr;
    noteOffer(link->client.isOffering());
    return link->client.isOffering() ? std::move(link) : nullptr;
}

void WindowPictures::noteOffer(bool areOffered)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (std::exchange(m_areOffered, areOffered) == areOffered)
            return;
    }
    m_offers.notify();
}

std::shared_ptr<WindowPictures::Job> WindowPictures::currentJob() const
{
    const std::scoped_lock lock(m_mutex);
    return m_job;
}

void WindowPictures::finish(Job& job, std::optional<WindowCapture> picture)
{
    {
        const std::scoped_lock lock(m_mutex);
        job.picture = std::move(picture);
        job.isDone = true;
        if (m_job.get() == &job)
            m_job.reset();
    }
    m_jobChanged.notify_all();
}

void WindowPictures::wake() const
{
    ::eventfd_write(m_waker.number(), 1);
}

void WindowPictures::clearWaker() const
{
    eventfd_t count = 0;
    ::eventfd_read(m_waker.number(), &count);
}

} // namespace kelpa::wayland
