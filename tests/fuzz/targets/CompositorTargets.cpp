// What a Wayland compositor says: sway's IPC, and the events of a capture.
#include "fuzz/FuzzTarget.h"
#include "model/GoalPins.h"
#include "model/WindowItem.h"
#include "platform/wayland/capture/CaptureForm.h"
#include "platform/wayland/sway/SwayBinding.h"
#include "platform/wayland/sway/SwayMessage.h"
#include "platform/wayland/sway/SwayTree.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace kelpa::fuzz {

using namespace wayland;

/// In two pieces, as the socket may give it; the same messages as in one.
void decodeSwayStream(const QByteArray& bytes)
{
    SwayMessageReader whole;
    SwayMessageReader pieces;
    whole.add(bytes);
    pieces.add(bytes.first(bytes.size() / 2));
    qsizetype count = 0;
    qsizetype countInPieces = 0;
    while (const auto message = pieces.next())
        ++countInPieces;
    pieces.add(bytes.mid(bytes.size() / 2));
    while (const auto message = pieces.next())
        ++countInPieces;
    while (const auto message = whole.next()) {
        ++count;
        reportOf(*message);
        SwayMessageReader again;
        again.add(encodedSwayMessage(*message));
        require(again.next() == message, "a message is read as it was written");
    }
    require(count == countInPieces && whole.isBroken() == pieces.isBroken(),
            "it does not matter in which pieces a stream arrives");
}

void decodeSwayTree(const QByteArray& bytes)
{
    const auto tree = treeIn(bytes);
    if (!tree)
        return;
    require(tree->workspaces.size() == mostVirtualDesktops, "a session has some desktops, and few");
    for (const SwayWindow& window : tree->windows) {
        require(window.process.value_or(1) > 0, "a window of sway's has a process, or none");
        const int desktop = window.desktopNumber.value_or(everyVirtualDesktop);
        require(desktop >= unnumberedVirtualDesktop && desktop <= tree->workspaces.size(),
                "a window of sway's is on a desktop that is there, or on one without a number");
    }
}

void decodeSwayConfiguration(const QByteArray& bytes)
{
    if (!bindsSuperAlone(bytes))
        require(bindsSuperAlone(bytes + "\nbindsym Super_L exec menu\n"),
                "a line is found whatever comes before it");
}

void decodeCaptureConstraints(const QByteArray& bytes)
{
    std::vector<std::uint32_t> words(static_cast<std::size_t>(bytes.size()) / 4);
    if (words.size() < 4)
        return;
    std::memcpy(words.data(), bytes.constData(), words.size() * 4);
    const CaptureConstraints constraints{words[0], words[1], {words.begin() + 3, words.end()}};
    const auto form = captureForm(constraints);
    if (!form)
        return;
    // What a compositor may ask for, but no test has the memory for each time.
    if (form->byteCount() > 65'536)
        return;
    const std::vector<std::byte> pixels(form->byteCount());
    const QSize largest(16, 16);
    const QImage picture = capturedPicture(*form, pixels, words[2], largest);
    require(picture.width() <= largest.width() && picture.height() <= largest.height(),
            "a picture is no larger than asked for");
}

} // namespace kelpa::fuzz
