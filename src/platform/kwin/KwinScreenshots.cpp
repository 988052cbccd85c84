#include "platform/kwin/KwinScreenshots.h"

#include "platform/FileDescriptor.h"
#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/BlockingBus.h"
#include "platform/kwin/KwinPicture.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace kelpa::kwin {

namespace {

using Clock = std::chrono::steady_clock;

const BusAddressee service{"org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2"};

/// How often a request to stop is looked for while KWin writes.
constexpr std::chrono::milliseconds stopInterval{50};

/// As GDBus understands it.
constexpr std::chrono::milliseconds noLimit{G_MAXINT};

struct Pipe
{
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

std::optional<Pipe> openPipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    // KWin never waits for its other end, this one not longer than it wants to.
    if (::fcntl(pipe.readEnd.number(), F_SETFL, O_NONBLOCK) != 0)
        return std::nullopt;
    return pipe;
}

GVariant* windowArguments(const QByteArray& uuid)
{
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    for (const auto& [name, isWanted] :
         {std::pair("include-cursor", false), std::pair("include-shadow", false),
          std::pair("include-decoration", true), std::pair("native-resolution", false)})
        g_variant_builder_add(&options, "{sv}", name,
                              g_variant_new_boolean(static_cast<gboolean>(isWanted)));
    return g_variant_new("(sa{sv}h)", uuid.constData(), &options, 0);
}

GVariant* pixelArguments(const QPoint& pixel)
{
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    return g_variant_new("(iiuua{sv}h)", pixel.x(), pixel.y(), 1U, 1U, &options, 0);
}

std::optional<PictureForm> formIn(GVariant* reply)
{
    const GlibPointer<GVariant> results(g_variant_get_child_value(reply, 0));
    const char* type = nullptr;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t stride = 0;
    std::uint32_t format = 0;
    if (g_variant_lookup(results.get(), "type", "&s", &type) == FALSE ||
        std::string_view(type) != "raw" ||
        g_variant_lookup(results.get(), "width", "u", &width) == FALSE ||
        g_variant_lookup(results.get(), "height", "u", &height) == FALSE ||
        g_variant_lookup(results.get(), "stride", "u", &stride) == FALSE ||
        g_variant_lookup(results.get(), "format", "u", &format) == FALSE)
        return std::nullopt;
    return pictureForm(width, height, stride, format);
}

/// Absent when KWin writes another number of bytes, not until `end`, or `stop` is requested.
std::optional<QByteArray> bytesFrom(int pipe, qsizetype count, Clock::time_point end,
                                    const std::stop_token& stop)
{
    QByteArray bytes(count, Qt::Uninitialized);
    qsizetype filled = 0;
    while (Clock::now() < end && !stop.stop_requested()) {
        pollfd waiting{.fd = pipe, .events = POLLIN, .revents = 0};
        if (::poll(&waiting, 1, static_cast<int>(stopInterval.count())) <= 0)
            continue;
        // One byte more shows that there are too many.
        char surplus = 0;
        const bool isFull = filled == count;
        const ssize_t got =
            isFull ? ::read(pipe, &surplus, 1)
                   : ::read(pipe, bytes.data() + filled, static_cast<std::size_t>(count - filled));
        if (got == 0)
            return isFull ? std::optional(std::move(bytes)) : std::nullopt;
        if (got > 0 && isFull)
            return std::nullopt;
        if (got > 0)
            filled += got;
        else if (errno != EAGAIN && errno != EINTR)
            return std::nullopt;
    }
    return std::nullopt;
}

ScreenshotOutcome outcomeOf(const BusReply& reply)
{
    switch (reply.outcome) {
    case BusCallOutcome::answered:
        return ScreenshotOutcome::taken;
    case BusCallOutcome::absent:
        return ScreenshotOutcome::unavailable;
    case BusCallOutcome::silent:
        return ScreenshotOutcome::silent;
    case BusCallOutcome::refused:
        break;
    }
    const std::string_view error = reply.error;
    if (error.ends_with(".NoAuthorized") || error.ends_with(".AccessDenied"))
        return ScreenshotOutcome::denied;
    return error.ends_with(".Cancelled") ? ScreenshotOutcome::cancelled : ScreenshotOutcome::failed;
}

} // namespace

PictureStanding standingAfter(ScreenshotOutcome outcome, PictureStanding before)
{
    switch (outcome) {
    case ScreenshotOutcome::taken:
    case ScreenshotOutcome::failed:
        return PictureStanding::given;
    case ScreenshotOutcome::denied:
        return PictureStanding::denied;
    case ScreenshotOutcome::unavailable:
        return PictureStanding::withoutOpenGL;
    case ScreenshotOutcome::cancelled:
    case ScreenshotOutcome::silent:
    case ScreenshotOutcome::drawsNothing:
        break;
    }
    return before;
}

namespace {

/// The requests that make KWin draw during one picture.
struct FrameRequests
{
    QPoint pixel;
    /// Before the first one.
    std::chrono::milliseconds delay;
    std::atomic<bool> hasBegun = false;
    std::atomic<bool> isAnswered = false;
};

} // namespace

struct KwinScreenshots::Parts
{
    BusReply call(const char* method, GVariant* arguments, int descriptor,
                  std::chrono::milliseconds replyLimit, const std::stop_token& stop)
    {
        return bus.call(service, method, arguments, "(a{sv})", replyLimit, descriptor, stop);
    }

    /// `arguments` is consumed.
    Screenshot take(const char* method, GVariant* arguments, const std::stop_token& stop);
    void requestFrames(FrameRequests& requests, const std::stop_token& done);

    const std::chrono::milliseconds limit;
    const std::chrono::milliseconds frameInterval;
    BlockingBus bus;
};

Screenshot KwinScreenshots::Parts::take(const char* method, GVariant* arguments,
                                        const std::stop_token& stop)
{
    const GlibPointer<GVariant> held(g_variant_ref_sink(arguments));
    const Clock::time_point end = Clock::now() + limit;
    std::optional<Pipe> pipe = openPipe();
    if (!pipe || stop.stop_requested())
        return {.outcome = ScreenshotOutcome::failed};
    // KWin replies before it writes.
    const BusReply reply = call(method, held.get(), pipe->writeEnd.number(), limit, stop);
    // Otherwise the pipe never ends.
    pipe->writeEnd.close();
    if (const ScreenshotOutcome outcome = outcomeOf(reply); outcome != ScreenshotOutcome::taken) {
        const bool isStopped = outcome == ScreenshotOutcome::silent && stop.stop_requested();
        return {.outcome = isStopped ? ScreenshotOutcome::failed : outcome};
    }
    const std::optional<PictureForm> form = formIn(reply.value.get());
    if (!form)
        return {.outcome = ScreenshotOutcome::failed};
    const std::optional<QByteArray> bytes =
        bytesFrom(pipe->readEnd.number(), form->byteCount(), end, stop);
    if (!bytes)
        return {.outcome =
                    Clock::now() < end ? ScreenshotOutcome::failed : ScreenshotOutcome::silent};
    const std::optional<QImage> image = pictureOf(*form, *bytes);
    if (!image)
        return {.outcome = ScreenshotOutcome::failed};
    return {.outcome = ScreenshotOutcome::taken, .image = *image};
}

/// KWin takes all pictures with its next frame. For one of the screen it draws such a frame, for
/// one of a window that is not shown it does not.
void KwinScreenshots::Parts::requestFrames(FrameRequests& requests, const std::stop_token& done)
{
    std::mutex mutex;
    std::condition_variable_any isDone;
    std::unique_lock lock(mutex);
    const auto pause = [&](std::chrono::milliseconds time) {
        isDone.wait_for(lock, done, time, [] { return false; });
    };
    for (pause(requests.delay); !done.stop_requested(); pause(frameInterval)) {
        requests.hasBegun = true;
        const Screenshot pixel = take("CaptureArea", pixelArguments(requests.pixel), done);
        if (!done.stop_requested() && pixel.outcome != ScreenshotOutcome::silent)
            requests.isAnswered = true;
    }
}

KwinScreenshots::KwinScreenshots(const QByteArray& busAddress, std::chrono::milliseconds limit,
                                 std::chrono::milliseconds frameInterval)
    : m_parts(new Parts{.limit = limit,
                        .frameInterval = frameInterval,
                        .bus = {busAddress.toStdString(), {}, {}}})
{}

KwinScreenshots::~KwinScreenshots() = default;

Screenshot KwinScreenshots::take(const QByteArray& uuid, IsShown isShown, const QPoint& pixel,
                                 const std::stop_token& stop)
{
    FrameRequests requests{.pixel = pixel,
                           .delay = isShown == IsShown::yes ? m_parts->frameInterval
                                                            : std::chrono::milliseconds(0)};
    // Its end waits for no reply.
    const std::jthread frames(
        [&](const std::stop_token& done) { m_parts->requestFrames(requests, done); });
    Screenshot screenshot = m_parts->take("CaptureWindow", windowArguments(uuid), stop);
    if (screenshot.outcome == ScreenshotOutcome::silent && requests.hasBegun &&
        !requests.isAnswered)
        screenshot.outcome = ScreenshotOutcome::drawsNothing;
    return screenshot;
}

bool KwinScreenshots::awaitFrame(const QPoint& pixel, const std::stop_token& stop)
{
    std::optional<Pipe> pipe = openPipe();
    if (!pipe)
        return false;
    const BusReply reply =
        m_parts->call("CaptureArea", pixelArguments(pixel), pipe->writeEnd.number(), noLimit, stop);
    pipe->writeEnd.close();
    if (reply.outcome != BusCallOutcome::answered)
        return false;
    // KWin writes it all the same.
    if (const std::optional<PictureForm> form = formIn(reply.value.get()))
        bytesFrom(pipe->readEnd.number(), form->byteCount(), Clock::now() + m_parts->limit, stop);
    return true;
}

ScreenshotOutcome KwinScreenshots::probe()
{
    const std::optional<Pipe> pipe = openPipe();
    if (!pipe)
        return ScreenshotOutcome::failed;
    return outcomeOf(m_parts->call("CaptureWindow",
                                   windowArguments("{00000000-0000-0000-0000-000000000000}"),
                                   pipe->writeEnd.number(), m_parts->limit, {}));
}

ScreenshotOutcome KwinScreenshots::probeWithPixel()
{
    const ScreenshotOutcome outcome = probe();
    if (outcome != ScreenshotOutcome::failed)
        return outcome;
    // Where nobody has told of the screens: that corner is on one, unless they form a step.
    const Screenshot corner = m_parts->take("CaptureArea", pixelArguments({0, 0}), {});
    return corner.outcome == ScreenshotOutcome::cancelled ? ScreenshotOutcome::unavailable
                                                          : outcome;
}

} // namespace kelpa::kwin
