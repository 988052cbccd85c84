"""What is asked of a board from a terminal."""


class CommandLine:
    """`command("pin", "Taxes", "none")` runs the program with these words for the board of `path`, and returns
    what it prints."""

    def __init__(self, desktop, binary, path):
        self._desktop = desktop
        self._words = (binary, "--settings", path)

    def __call__(self, *words):
        return self._desktop.run(*self._words, *words)

    def assign(self, title, goal):
        """Gives the goal the listed window with that text in its line."""
        number = next(line.split()[0] for line in self("windows").splitlines() if title in line)
        self("assign", number, "--goal", goal)
