// The decoders of bytes from outside, each as a function that a fuzzer and the tests call alike. A
// target feeds the bytes to its decoder and requires what holds for every input: that what was
// accepted keeps its rules, and that it survives being written and read again.
#pragma once

#include <QByteArray>

#include <span>
#include <string_view>

namespace kelpa::fuzz {

struct FuzzTarget
{
    /// Also that of the folder with its corpus.
    std::string_view name;
    void (*decode)(const QByteArray& bytes);
};

/// All of them; of static storage.
std::span<const FuzzTarget> fuzzTargets();

/// Ends the process, after it has named the broken promise, unless the promise holds.
void require(bool holds, const char* promise);

void decodeGoalsDocument(const QByteArray& bytes);
void decodeTodosDocument(const QByteArray& bytes);
void decodeAssignmentsDocument(const QByteArray& bytes);
void decodeGoalPinsDocument(const QByteArray& bytes);
void decodeWindowMemory(const QByteArray& bytes);
void decodeStoredBoard(const QByteArray& bytes);
void decodeNameTable(const QByteArray& bytes);
void decodeWindowOwners(const QByteArray& bytes);

void decodeDragText(const QByteArray& bytes);
void decodePastedText(const QByteArray& bytes);

void decodeJsonImport(const QByteArray& bytes);
void decodeMarkdownImport(const QByteArray& bytes);
void decodeTodoTxtImport(const QByteArray& bytes);
void decodeCalendarImport(const QByteArray& bytes);

void decodeDesktopEntry(const QByteArray& bytes);
void decodeExecLine(const QByteArray& bytes);
void decodeIconFile(const QByteArray& bytes);
void decodeSvg(const QByteArray& bytes);
void decodeNetWmIcon(const QByteArray& bytes);

void decodeWindowProperties(const QByteArray& bytes);
void decodeXSettings(const QByteArray& bytes);
void decodeTitle(const QByteArray& bytes);

void decodeKwinReport(const QByteArray& bytes);
void decodeShellWindows(const QByteArray& bytes);
void decodeShellWorkspaces(const QByteArray& bytes);
void decodeShellPicture(const QByteArray& bytes);
void decodeAutomationCall(const QByteArray& bytes);

void decodeSwayStream(const QByteArray& bytes);
void decodeSwayTree(const QByteArray& bytes);
void decodeSwayConfiguration(const QByteArray& bytes);
void decodeCaptureConstraints(const QByteArray& bytes);

} // namespace kelpa::fuzz
