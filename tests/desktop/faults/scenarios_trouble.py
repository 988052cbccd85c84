"""A board that cannot be saved or read: what the board says of it, and until when."""

import sqlite3

import board as boards
import file_manager
import settings
from disks import Disk
from helper import Helper
from kelpa import Kelpa
from processes import wait_until

_GOAL = "Errands"


def _write(desktop):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, [])], is_auto_sorting=False)
    return path


def _add_todo(desktop, kelpa, title):
    kelpa.focus()
    kelpa.click(*kelpa.column_button(_GOAL, boards.ADD_TODO))
    wait_until("a todo can be typed", kelpa.board.focused_field)
    desktop.type(title)
    desktop.key("Return")


def _wait_for(kelpa, text):
    wait_until(f"the board says {text!r}", lambda: kelpa.board.has_text(text))


def _wait_until_gone(kelpa, text):
    wait_until(f"the board no longer says {text!r}", lambda: not kelpa.board.has_text(text))


def _press(kelpa, button):
    wait_until(f"there is a button {button!r}", lambda: kelpa.board.button(button)).press()


def _stored_goals(path):
    return settings.StoredBoard(settings.read_live(path)).goal_titles


def _stored_todos(path):
    return [title for title, _ in settings.StoredBoard(settings.read_live(path)).todos(_GOAL)]


def a_full_disk_is_told_asked_about_and_over_when_there_is_room(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
        reader = Helper(desktop, "alert_listener.py", "listening")
        disk.fill()
        _add_todo(desktop, kelpa, "Buy milk")
        _wait_for(kelpa, boards.DISK_FULL)
        reader.wait_for(f"{boards.DISK_FULL}|Your changes are kept while Kelpa is open, and saved as "
                        "soon as possible. Free some space on the disk.")
        assert _stored_todos(path) == []

        # The person is asked before anything is lost, and by keyboard.
        desktop.close(kelpa.window)
        _wait_for(kelpa, boards.CHANGES_UNSAVED)
        wait_until("trying again has the keyboard",
                   lambda: boards.TRY_AGAIN in kelpa.board.focused_names())
        desktop.key("Escape")
        _wait_until_gone(kelpa, boards.CHANGES_UNSAVED)
        _add_todo(desktop, kelpa, "Call back")
        kelpa.wait_for_todos(_GOAL, [("Buy milk", boards.TODO), ("Call back", boards.TODO)])

        disk.make_room()
        _press(kelpa, boards.TRY_AGAIN)
        _wait_until_gone(kelpa, boards.DISK_FULL)
        assert _stored_todos(path) == ["Buy milk", "Call back"]


def a_disk_with_room_again_ends_the_question_and_the_program(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    kelpa = Kelpa(desktop, binary, path, env=disk.env)
    kelpa.start()
    disk.fill()
    _add_todo(desktop, kelpa, "Buy milk")
    _wait_for(kelpa, boards.DISK_FULL)
    desktop.close(kelpa.window)
    _wait_for(kelpa, boards.CHANGES_UNSAVED)
    disk.make_room()
    wait_until("the window is closed", lambda: kelpa.shown_window() is None)
    assert settings.StoredBoard(settings.read_live(path)).todos(_GOAL) == [("Buy milk", boards.TODO)]
    kelpa.terminate()
    assert kelpa.wait() == 0


def changes_that_cannot_be_saved_are_given_up_only_by_who_says_so(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    words = f"kelpa: the last changes to the board in {path} could not be saved"
    for by_signal in (False, True):
        kelpa = Kelpa(desktop, binary, path, env=disk.env)
        kelpa.start()
        disk.fill()
        _add_todo(desktop, kelpa, "Buy milk")
        _wait_for(kelpa, boards.DISK_FULL)
        if by_signal:
            desktop.run("kill", kelpa.process_id())
        else:
            desktop.close(kelpa.window)
            _press(kelpa, boards.CLOSE_ANYWAY)
        assert kelpa.wait() == 0
        assert words in kelpa.output(), kelpa.output()
        disk.make_room()


def who_does_not_see_the_board_is_notified(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    service = Helper(desktop, "notification_service.py", "ready")
    with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
        disk.fill()
        _add_todo(desktop, kelpa, "Buy milk")
        _wait_for(kelpa, boards.DISK_FULL)
        assert service.lines() == ["ready"], "the board says it"
        desktop.run("xdotool", "windowminimize", kelpa.window.number)
        service.wait_for(f"show {boards.CHANGES_UNSAVED}: {boards.DISK_FULL}")
        disk.make_room()
        service.wait_for("close")
        wait_until("the todo is stored", lambda: _stored_todos(path) == ["Buy milk"])


def who_does_not_see_the_board_is_told_of_a_disk_that_hangs(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    service = Helper(desktop, "notification_service.py", "ready")
    with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
        disk.hang()
        _add_todo(desktop, kelpa, "Buy milk")
        _wait_for(kelpa, boards.SAVING)
        desktop.run("xdotool", "windowminimize", kelpa.window.number)
        service.wait_for(f"show {boards.CHANGES_STILL_SAVING}: {boards.DISK_SLOW}")
        disk.recover()
        service.wait_for("close")


def what_the_board_says_by_itself_is_read_out(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    disk.protect()
    reader = Helper(desktop, "alert_listener.py", "listening")
    kept = "Your changes are kept while Kelpa is open, and saved as soon as possible."
    with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
        # It is there before the window.
        reader.wait_for(f"{boards.FILE_READ_ONLY}|{kept} Check the permissions of the file and its "
                        "folder, and whether the disk is write-protected.")
        path.unlink()
        path.mkdir()
        disk.unprotect()
        reader.wait_for(f"{boards.FILE_IS_FOLDER}|{kept} Move or rename the folder.")
        path.rmdir()
        _wait_until_gone(kelpa, boards.FILE_IS_FOLDER)
        for title in ("Buy milk", "Call back"):
            disk.hang()
            _add_todo(desktop, kelpa, title)
            _wait_for(kelpa, boards.SAVING)
            disk.recover()
            _wait_until_gone(kelpa, boards.SAVING)
        _press(kelpa, "More todo actions")
        wait_until("the todo can be deleted", lambda: kelpa.board.menu_item("Delete todo")).press()
        reader.wait_for("Todo deleted|")
        assert reader.lines().count(f"{boards.SAVING}|") == 2, reader.lines()


def a_read_only_folder_is_told_before_and_after_a_change_until_it_can_be_written_to(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    disk.protect()
    with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
        _wait_for(kelpa, boards.FILE_READ_ONLY)
        kelpa.wait_for_goals(_GOAL)
        _add_todo(desktop, kelpa, "Buy milk")
        kelpa.wait_for_todos(_GOAL, [("Buy milk", boards.TODO)])
        desktop.close(kelpa.window)
        _press(kelpa, boards.CANCEL)
        assert kelpa.board.has_text(boards.FILE_READ_ONLY)
        disk.unprotect()
        _wait_until_gone(kelpa, boards.FILE_READ_ONLY)
        assert _stored_todos(path) == ["Buy milk"]


def a_folder_in_the_files_place_is_told_until_it_is_gone(desktop, binary):
    path = _write(desktop)
    shown = file_manager.install(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        path.unlink()
        path.mkdir()
        _add_todo(desktop, kelpa, "Buy milk")
        _wait_for(kelpa, boards.FILE_IS_FOLDER)
        assert "it is a folder" in kelpa.output()
        _press(kelpa, boards.SHOW_FOLDER)
        wait_until("the folder is shown", shown.exists)
        path.rmdir()
        _wait_until_gone(kelpa, boards.FILE_IS_FOLDER)
        assert _stored_todos(path) == ["Buy milk"]


def a_file_of_a_newer_version_is_told_and_left_alone(desktop, binary):
    path = _write(desktop)
    with sqlite3.connect(path) as connection:
        connection.execute("PRAGMA user_version = 2")
    connection.close()
    before = path.read_bytes()
    # What could not be read is the language too.
    text = "看板文件来自更新版本的 Kelpa"
    kelpa = Kelpa(desktop, binary, path)
    kelpa.start()
    _wait_for(kelpa, text)
    assert kelpa.board.column(_GOAL) is None
    # Nothing would be lost.
    kelpa.quit()
    assert path.read_bytes() == before


def a_file_that_another_program_has_locked_is_told_until_it_can_be_read(desktop, binary):
    path = _write(desktop)
    other = sqlite3.connect(path, isolation_level=None)
    other.execute("BEGIN EXCLUSIVE")
    text = "另一个程序锁定了看板文件"
    with Kelpa(desktop, binary, path) as kelpa:
        _wait_for(kelpa, text)
        assert kelpa.board.column(_GOAL) is None
        other.execute("COMMIT")
        other.close()
        kelpa.wait_for_goals(_GOAL)
        _wait_until_gone(kelpa, text)


def a_file_that_was_moved_aside_is_told_until_the_person_knows(desktop, binary):
    # The language may be among what can still be read.
    said = {"看板文件已损坏，或不属于 Kelpa": "知道了",
            "The board’s file was damaged or not Kelpa’s": "Got it"}
    path = desktop.directory / "board.sqlite"

    def damaged():
        path.write_bytes(b"Dear diary, " + bytes(5000))

    def truncated():
        settings.write(path, goals=[(f"{_GOAL} {number}", ["Todo"] * 20) for number in range(50)])
        with path.open("r+b") as file:
            file.truncate(10_000)

    def foreign():
        with sqlite3.connect(path) as connection:
            connection.execute("PRAGMA application_id = 7")
            connection.execute("CREATE TABLE theirs(a)")
        connection.close()

    for number, make in enumerate((damaged, truncated, foreign), 1):
        make()
        content = path.read_bytes()
        with Kelpa(desktop, binary, path) as kelpa:
            text = wait_until("the board says it", lambda: next(
                (each for each in said if kelpa.board.has_text(each)), None))
            aside = sorted(desktop.directory.glob("board.sqlite.damaged-*Z*"))
            assert len(aside) == number and content in [each.read_bytes() for each in aside]
            _press(kelpa, said[text])
            _wait_until_gone(kelpa, text)
        path.unlink()


def a_display_that_goes_away_while_the_disk_hangs_says_what_may_be_lost(desktop, binary):
    path = _write(desktop)
    disk = Disk(desktop, binary)
    kelpa = Kelpa(desktop, binary, path, env=disk.env)
    kelpa.start()
    disk.hang()
    _add_todo(desktop, kelpa, "Buy milk")
    kelpa.wait_for_todos(_GOAL, [("Buy milk", boards.TODO)])

    def has_ended():
        assert kelpa.wait(60) == 1
        assert f"the disk with {path} does not reply; the last changes may be lost" in kelpa.output()

    desktop.replace_x_server(has_ended)
