# shellcheck shell=bash
# Sourced, not run. Configures and builds one preset of the project at $root.

jobs="${KELPA_JOBS:-$(nproc)}"
# Most of a test's time is waiting for programs to start and to answer, so that twice as many tests as
# there are processors keep them busy. Those that measure time run alone.
# shellcheck disable=SC2034
test_jobs="${KELPA_JOBS:-$((jobs * 2))}"

# build_preset PRESET [TARGET...]: everything, or only the named targets.
build_preset() {
    local preset="$1"
    shift
    # The generated build files notice changes of the CMake files by themselves, but not of the presets.
    if [[ ! "$root/build/$preset/build.ninja" -nt "$root/CMakePresets.json" ]]; then
        (cd "$root" && cmake --preset "$preset" >&2)
    fi
    if [[ $# -gt 0 ]]; then
        set -- --target "$@"
    fi
    cmake --build "$root/build/$preset" --parallel "$jobs" "$@" >&2
}
