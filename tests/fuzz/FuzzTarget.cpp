#include "fuzz/FuzzTarget.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace kelpa::fuzz {

namespace {

constexpr std::array targets{
    FuzzTarget{"goals", decodeGoalsDocument},
    FuzzTarget{"todos", decodeTodosDocument},
    FuzzTarget{"assignments", decodeAssignmentsDocument},
    FuzzTarget{"goal-pins", decodeGoalPinsDocument},
    FuzzTarget{"window-memory", decodeWindowMemory},
    FuzzTarget{"stored-board", decodeStoredBoard},
    FuzzTarget{"name-table", decodeNameTable},
    FuzzTarget{"window-owners", decodeWindowOwners},
    FuzzTarget{"drag-text", decodeDragText},
    FuzzTarget{"pasted-text", decodePastedText},
    FuzzTarget{"import-json", decodeJsonImport},
    FuzzTarget{"import-markdown", decodeMarkdownImport},
    FuzzTarget{"import-todotxt", decodeTodoTxtImport},
    FuzzTarget{"import-icalendar", decodeCalendarImport},
    FuzzTarget{"desktop-entry", decodeDesktopEntry},
    FuzzTarget{"exec-line", decodeExecLine},
    FuzzTarget{"icon-file", decodeIconFile},
    FuzzTarget{"svg", decodeSvg},
    FuzzTarget{"net-wm-icon", decodeNetWmIcon},
    FuzzTarget{"window-properties", decodeWindowProperties},
    FuzzTarget{"xsettings", decodeXSettings},
    FuzzTarget{"title", decodeTitle},
    FuzzTarget{"kwin-report", decodeKwinReport},
    FuzzTarget{"shell-windows", decodeShellWindows},
    FuzzTarget{"shell-workspaces", decodeShellWorkspaces},
    FuzzTarget{"shell-picture", decodeShellPicture},
    FuzzTarget{"automation-call", decodeAutomationCall},
    FuzzTarget{"sway-stream", decodeSwayStream},
    FuzzTarget{"sway-tree", decodeSwayTree},
    FuzzTarget{"sway-configuration", decodeSwayConfiguration},
    FuzzTarget{"capture-constraints", decodeCaptureConstraints},
};

} // namespace

std::span<const FuzzTarget> fuzzTargets()
{
    return targets;
}

void require(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

} // namespace kelpa::fuzz
