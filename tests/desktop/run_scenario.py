"""run_scenario.py BINARY DIRECTORY MODULE FUNCTION: one scenario on a desktop of its own."""

import importlib
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent / "support"))

import processes
import scenario_run
from harness import Desktop


def main():
    binary, directory, module, function = sys.argv[1:]
    processes.exit_on_signals()
    scenario = getattr(importlib.import_module(module), function)
    # Wide enough for six columns, so that few scenarios have to scroll.
    wanted = {"size": "2100x1000x24", **getattr(scenario, "desktop", {})}
    with Desktop(directory, **wanted) as desktop:
        return scenario_run.run(desktop, binary, scenario, logs=["session-*.log"])


if __name__ == "__main__":
    sys.exit(main())
