"""A file manager for a desktop that has none, or another one."""

import pathlib


def install(desktop):
    """To be called before the program starts. Returns a file that exists once a folder was shown."""
    shown = desktop.directory / "shown"
    applications = pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "applications"
    applications.mkdir()
    (applications / "files.desktop").write_text(
        f"[Desktop Entry]\nType=Application\nName=Files\nMimeType=inode/directory;\nExec=touch {shown} %u\n",
        encoding="utf-8")
    (applications / "mimeinfo.cache").write_text(
        "[MIME Cache]\ninode/directory=files.desktop;\n", encoding="utf-8")
    (applications / "mimeapps.list").write_text(
        "[Default Applications]\ninode/directory=files.desktop\n", encoding="utf-8")
    return shown
