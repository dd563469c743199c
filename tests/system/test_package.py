"""The Debian package: what it brings, and the program started from it by its launcher."""

from __future__ import annotations

import os
import resource
import shutil
import signal
import stat
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from desk import KEY, PATIENT_LINE, PROJECT
from kelmoran_robot import Program, Robot
from virtual_screen import VirtualScreen, die_with_parent
from waiting import wait_for

LANGUAGES = ("en", "fr", "de", "it", "es", "nl")
CATALOGUES = {"en": "En/kelmoran_en.qm", "fr": "Fr/kelmoran_fr.qm", "de": "Dekelmoran_de.qm",
              "it": "Itkelmoran_it.qm", "es": "Eskelmoran_es.qm", "nl": "Nlkelmoran_nl.qm"}
PROGRAMS = ("kelmoran", "kelmoran-language", "kelmoran-rehearse", "kelmoran-observers")
CALIBRATION = {"de": "Kalibrierung", "fr": "Calibrage"}
DATA = {"Parameters/patients_list.txt": PATIENT_LINE,
        "Parameters/assessor.txt": b"Dr.;Weber;Klara;;;;;\n",
        "Parameters/screen.pix": bytes(12),
        "Parameters/site.txt": b"WARD3\n",
        "Results/output.csv": b"a row that was measured\n",
        f"Archives/{KEY}/Output_T2_S04_{KEY}.pdf": b"a report\0"}
TASK2_DE = "Languages/DeKelmoran_Task2_de.html"
Done = subprocess.CompletedProcess[str]


def run(*command: str | Path, **options) -> Done:  # type: ignore[no-untyped-def]
    """A command to its end; the options are those of `subprocess.run`."""
    return subprocess.run([str(part) for part in command], text=True, capture_output=True,
                          stdin=subprocess.DEVNULL, check=False, **options)


def run_well(*command: str | Path, **options) -> str:  # type: ignore[no-untyped-def]
    """What a command says that has to succeed."""
    done = run(*command, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command[0]} failed: {done.stdout}{done.stderr}")
    return done.stdout


def small_files() -> None:
    """No file grows beyond a few bytes: the write fails half-way, as on a full disk."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))


class Packages:
    """The package of this build, made once, and a later one for an upgrade."""

    def __init__(self, folder: Path) -> None:
        run_well("cpack", "-B", folder / "made", cwd=os.environ["KELMORAN_BUILD"])
        self.package, = (folder / "made").glob("*.deb")
        self.later = folder / "later.deb"
        self._make_later(folder / "later")

    def _make_later(self, folder: Path) -> None:
        """The same with another version, in which a template has changed."""
        run_well("dpkg-deb", "-R", self.package, folder)
        control = folder / "DEBIAN" / "control"
        text = control.read_text()
        version = run_well("dpkg-deb", "-f", self.package, "Version").strip()
        control.write_text(text.replace(f"Version: {version}\n", "Version: 99\n"))
        template = folder / "usr/share/kelmoran/languages/de/Kelmoran_Task2_de.html"
        template.write_bytes(template.read_bytes() + b"<!-- later -->\n")
        run_well("dpkg-deb", "--root-owner-group", "-Znone", "-b", folder, self.later)


packages: Packages
screen: VirtualScreen


def setUpModule() -> None:
    global packages, screen
    folder = unittest.enterModuleContext(tempfile.TemporaryDirectory(prefix="kelmoran-package-"))
    packages = Packages(Path(folder))
    screen = unittest.enterModuleContext(VirtualScreen())


class Computer:
    """A clean computer, as far as the package is concerned, with one user."""

    def __init__(self, folder: Path) -> None:
        self.system = folder / "system"
        self.home = folder / "home"
        self.home.mkdir()
        admin = self.system / "var/lib/dpkg"
        for name in ("info", "updates", "triggers"):
            (admin / name).mkdir(parents=True)
        (admin / "status").touch()

    @property
    def root(self) -> Path:
        """Where the user's data lie."""
        return self.home / ".local/share/kelmoran"

    def command(self, name: str) -> Path:
        return self.system / "usr/bin" / name

    def dpkg(self, *arguments: str | Path) -> None:
        """The libraries are those of this computer, of which the clean one knows nothing."""
        path = os.environ["PATH"] + ":/usr/sbin:/sbin"
        run_well("dpkg", f"--root={self.system}", "--force-not-root", "--force-depends",
                 "--log=/dev/null", *arguments, env={**os.environ, "PATH": path})

    def environment(self, **settings: str | Path | None) -> dict[str, str]:
        """A session of the user, without a display; None takes a setting away."""
        kept = {name: value for name, value in os.environ.items()
                if not name.startswith(("LC_", "LANG", "XDG_", "DISPLAY", "WAYLAND", "KELMORAN",
                                        "QT_"))}
        wanted = {"HOME": self.home, "LANG": "de_DE.UTF-8", **settings}
        kept = {name: value for name, value in kept.items() if name not in wanted}
        return {**kept, **{name: str(value) for name, value in wanted.items() if value is not None}}


class Launched(Program):
    """One run of the program, begun by the launcher of the package."""

    def __init__(self, computer: Computer, *arguments: str) -> None:
        self.screen = screen
        self.root = computer.root
        self._said = tempfile.TemporaryFile()
        self.process = subprocess.Popen(
            [str(computer.command("kelmoran")), *arguments],
            env=computer.environment(DISPLAY=screen.name), stdin=subprocess.DEVNULL,
            stdout=self._said, stderr=self._said, preexec_fn=die_with_parent)


class Case(unittest.TestCase):
    def setUp(self) -> None:
        folder = self.enterContext(tempfile.TemporaryDirectory(prefix="kelmoran-computer-"))
        self.computer = Computer(Path(folder))
        self.computer.dpkg("-i", packages.package)
        self.root = self.computer.root

    def language(self, *arguments: str, **settings: str | Path | None) -> Done:
        return run(self.computer.command("kelmoran-language"), *arguments,
                   env=self.computer.environment(**settings))

    def speaks(self, *arguments: str, **settings: str | Path | None) -> str:
        """The language that `kelmoran-language` tells."""
        done = self.language(*arguments, **settings)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return done.stdout.removeprefix("Kelmoran speaks ")[:2]

    def set_language(self, language: str) -> None:
        done = self.language(language)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def assert_catalogues(self, *languages: str) -> None:
        """Which catalogues lie in the data root, under whatever name."""
        found = {str(path.relative_to(self.root / "Languages"))
                 for path in (self.root / "Languages").rglob("*.qm")}
        self.assertEqual(found, {CATALOGUES[language] for language in languages})

    def assert_refused(self, done: Done, code: int, text: str) -> None:
        """One line on the error stream, and nothing else."""
        self.assertEqual((done.returncode, done.stdout), (code, ""))
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
        self.assertIn(text, done.stderr)

    def keep_data(self) -> None:
        for name, content in DATA.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)

    def assert_data_untouched(self) -> None:
        found = {str(path.relative_to(self.root)): path.read_bytes()
                 for folder in ("Parameters", "Results", "Archives")
                 for path in (self.root / folder).rglob("*") if path.is_file()}
        self.assertEqual(found, DATA)


class Content(unittest.TestCase):
    def setUp(self) -> None:
        lines = run_well("dpkg-deb", "-c", packages.package).splitlines()
        self.entries = {line.split(maxsplit=5)[5].removeprefix("./"): line.split(maxsplit=5)
                        for line in lines}

    def test_all_words_of_the_six_languages_are_there(self) -> None:
        documents = ["About", "Publications", "Video-instructions", "Task1", "Task2", "Task3", "Task4"]
        words = "usr/share/kelmoran/languages"
        wanted = {f"{words}/kelmoran-report.css"}
        for language in LANGUAGES:
            wanted |= {f"{words}/kelmoran_{language}.qm",
                       f"{words}/Kelmoran_Instruction-book_{language}.pdf"}
            wanted |= {f"{words}/{language}/Kelmoran_{name}_{language}.html" for name in documents}
        found = {name for name in self.entries if name.startswith(words) and not name.endswith("/")}
        images = {name for name in found if name.startswith(f"{words}/images/")}
        self.assertEqual(found - images, wanted)
        stills = PROJECT / "docs/images"
        self.assertEqual({name.removeprefix(f"{words}/images/") for name in images},
                         {str(path.relative_to(stills)) for path in stills.rglob("*.png")})

    def test_a_desktop_finds_what_it_needs(self) -> None:
        icons = [f"usr/share/icons/hicolor/{size}x{size}/apps/kelmoran.png"
                 for size in (16, 24, 32, 48, 64, 128, 256)]
        manuals = [f"usr/share/man/man1/{program}.1.gz" for program in PROGRAMS]
        documents = [f"usr/share/doc/kelmoran/{name}" for name in ("copyright", "changelog.gz",
                                                                   "install.md")]
        for name in [*icons, *manuals, *documents, "usr/share/applications/kelmoran.desktop",
                     "usr/share/icons/hicolor/scalable/apps/kelmoran.svg",
                     "usr/share/metainfo/local.kelmoran.kelmoran.metainfo.xml"]:
            self.assertIn(name, self.entries)

    def test_everything_belongs_to_the_system_and_can_be_read(self) -> None:
        commands = {f"usr/bin/{program}" for program in PROGRAMS}
        commands |= {"usr/libexec/kelmoran/kelmoran", "usr/libexec/kelmoran/kelmoran-notice"}
        for name, (mode, owner, *_) in self.entries.items():
            self.assertEqual(owner, "root/root", name)
            runs = name.endswith("/") or name in commands
            self.assertEqual(mode[1:], "rwxr-xr-x" if runs else "rw-r--r--", name)
            self.assertRegex(name, r"^(usr/.*)?$")
        self.assertLessEqual(commands, set(self.entries))

    def test_it_asks_for_what_the_program_needs(self) -> None:
        needed = run_well("dpkg-deb", "-f", packages.package, "Depends")
        names = {part.split()[0] for part in needed.split(",")}
        self.assertLessEqual({"fonts-liberation", "qt6-translations-l10n", "libqt6widgets6",
                              "libqt6printsupport6", "libqt6webenginewidgets6", "libc6"}, names)

    def test_the_desktop_entry_the_metadata_and_the_manuals_are_valid(self) -> None:
        packaging = PROJECT / "packaging"
        self.assertEqual(run_well("desktop-file-validate", packaging / "kelmoran.desktop"), "")
        run_well("appstreamcli", "validate", "--no-net", packaging / "kelmoran.metainfo.xml")
        pages = list((packaging / "man").glob("*.1"))
        self.assertEqual({page.stem for page in pages}, set(PROGRAMS))
        self.assertEqual(run_well("mandoc", "-Tlint", "-Wwarning", *pages), "")

    def test_the_versions_agree(self) -> None:
        version = run_well("dpkg-deb", "-f", packages.package, "Version").strip()
        packaging = PROJECT / "packaging"
        release = ElementTree.parse(packaging / "kelmoran.metainfo.xml").find("releases/release")
        assert release is not None
        self.assertEqual(release.get("version"), version)
        self.assertTrue((packaging / "changelog").read_text().startswith(f"kelmoran ({version}) "))


class OnTheScreen(Case):
    def start(self, *arguments: str) -> Robot:
        program = Launched(self.computer, *arguments)
        self.addCleanup(program.stop)
        return Robot(screen, program)

    def see_language(self, language: str, *arguments: str) -> None:
        """Starts the program on a screen that was never measured: it asks for a ruler in this
        language, and behind that the main window stands."""
        robot = self.start(*arguments)
        calibration = robot.wait_window(CALIBRATION[language])
        robot.eyes.ask_to_close(calibration)
        robot.wait_gone(calibration.title)
        robot.wait_ready()
        robot.eyes.ask_to_close(robot.main_window())
        self.assertEqual(robot.program.wait_until_ended(), 0)

    def test_the_first_start_lays_out_a_root_in_the_language_of_the_user(self) -> None:
        self.see_language("de")
        self.assert_catalogues("de")
        self.assertEqual(self.speaks(), "de")
        for name in ("bin", "Parameters", "Results", "Archives"):
            self.assertTrue((self.root / name).is_dir(), name)
        for language in LANGUAGES:
            place = CATALOGUES[language].removesuffix(f"kelmoran_{language}.qm")
            for name in ("About", "Publications", "Video-instructions", "Task1", "Task4"):
                document = self.root / f"Languages/{place}Kelmoran_{name}_{language}.html"
                self.assertTrue(document.is_file(), document)
            book = self.root / f"Languages/{place}Kelmoran_Instruction-book_{language}.pdf"
            self.assertEqual(book.read_bytes()[:5], b"%PDF-")

        self.set_language("fr")
        self.assert_catalogues("fr")
        self.see_language("fr")
        self.see_language("de", "--language", "de")
        self.assert_catalogues("de")

    def test_the_desktop_entry_starts_the_commands_of_the_package(self) -> None:
        entry = (self.computer.system / "usr/share/applications/kelmoran.desktop").read_text()
        starts = [line.removeprefix("Exec=") for line in entry.splitlines() if line.startswith("Exec=")]
        self.assertEqual(starts, ["kelmoran"] + [f"kelmoran --language {language}"
                                                 for language in LANGUAGES])

    def test_who_started_by_an_icon_sees_in_a_box_why_there_is_no_window(self) -> None:
        shutil.rmtree(self.computer.home)
        self.computer.home.write_bytes(b"no folder")
        robot = self.start()
        wait_for("the box", lambda: (box := robot.eyes.find("Kelmoran")) and robot.eyes.has_focus(box))
        robot.hands.press("Return")
        self.assertEqual(robot.program.wait_until_ended(), 1)
        self.assertEqual(robot.program.said().splitlines()[0],
                         f"kelmoran: can't make the data folders in {self.root}: Not a directory")


class Language(Case):
    def test_the_first_language_is_that_of_the_locale(self) -> None:
        for locale, language in (("de_DE.UTF-8", "de"), ("fr", "fr"), ("it_CH", "it"), ("es_419", "es"),
                                 ("nl_BE@euro", "nl"), ("en_GB.UTF-8", "en"), ("pt_BR.UTF-8", "en"),
                                 ("C.UTF-8", "en"), ("", "en"), (None, "en"), ("deutsch", "en")):
            self.assertEqual(self.speaks(LANG=locale), language, locale)
        self.assertEqual(self.speaks(LC_MESSAGES="fr_FR.UTF-8"), "fr")
        self.assertEqual(self.speaks(LC_ALL="C.UTF-8", LC_MESSAGES="fr_FR.UTF-8"), "en")
        self.assertFalse(self.root.exists(), "a question has laid out a root")

    def test_a_choice_stays_whatever_the_locale(self) -> None:
        for language in LANGUAGES:
            self.set_language(language)
            self.assert_catalogues(language)
            self.assertEqual(self.speaks(LANG="it_IT.UTF-8"), language)

    def test_a_first_start_on_a_full_disk_is_made_up_for_by_the_next(self) -> None:
        done = run(self.computer.command("kelmoran"), env=self.computer.environment(),
                   preexec_fn=small_files)
        self.assert_refused(done, 1, "kelmoran: can't write into ")
        self.assertEqual(self.speaks(LANG="it_IT.UTF-8"), "it", "the root counts as laid out")

    def test_a_start_without_a_display_is_told_in_a_line(self) -> None:
        done = run(self.computer.command("kelmoran"), env=self.computer.environment())
        self.assert_refused(done, 1, "kelmoran: there is no display")

    def test_a_lost_template_comes_back_with_a_choice(self) -> None:
        self.set_language("de")
        template = self.root / TASK2_DE
        before = template.read_bytes()
        template.unlink()
        self.set_language("de")
        self.assertEqual(template.read_bytes(), before)

    def test_a_run_that_was_cut_short_is_taken_up(self) -> None:
        self.set_language("de")
        left = self.root / "Languages/.new/Kelmoran_About_nl.html"
        left.parent.mkdir()
        left.write_bytes(b"half a page")
        before = {path.name for path in (self.root / "Languages").iterdir()} - {".new"}
        self.set_language("de")
        self.assertEqual({path.name for path in (self.root / "Languages").iterdir()}, before)

    def test_the_six_choices_are_told(self) -> None:
        choices = self.language().stdout.splitlines()[1:]
        self.assertEqual([line.split()[0] for line in choices], list(LANGUAGES))

    def test_a_wrong_argument_is_told_in_a_line_and_changes_nothing(self) -> None:
        self.set_language("nl")
        for arguments in (("pt",), ("DE",), ("",), ("de", "fr"), ("--loud",), ("--root",)):
            self.assert_refused(self.language(*arguments), 2, "kelmoran-language: ")
        for arguments in (("--language", "pt"), ("--root",), ("--root", ""), ("de",)):
            done = run(self.computer.command("kelmoran"), *arguments, env=self.computer.environment())
            self.assert_refused(done, 2, "kelmoran: ")
        self.assert_catalogues("nl")

    def test_a_user_without_a_home_in_the_environment_has_one_all_the_same(self) -> None:
        self.assertEqual(self.speaks(HOME=None, XDG_DATA_HOME=self.computer.home), "de")
        self.assertEqual(self.language(HOME=None).returncode, 0)

    def test_a_home_that_cannot_be_written_is_told_in_a_line(self) -> None:
        for home in ("/proc", "/dev/null"):
            self.assert_refused(self.language("de", HOME=home), 1,
                                f"can't make the data folders in {home}/.local/share/kelmoran: ")

    def test_a_full_disk_is_told_in_a_line_and_leaves_what_was_there(self) -> None:
        self.set_language("de")
        self.keep_data()
        before = (self.root / TASK2_DE).read_bytes()
        self.computer.dpkg("-i", packages.later)
        done = run(self.computer.command("kelmoran-language"), "fr",
                   env=self.computer.environment(), preexec_fn=small_files)
        self.assert_refused(done, 1, "can't write ")
        self.assertEqual((self.root / TASK2_DE).read_bytes(), before)
        self.assertEqual(list((self.root / "Languages").rglob("*.new")), [])
        self.assert_catalogues("de")
        self.assert_data_untouched()

        self.set_language("fr")
        self.assertNotEqual((self.root / TASK2_DE).read_bytes(), before)
        self.assert_catalogues("fr")


class Data(Case):
    def test_an_upgrade_and_a_removal_touch_nothing_that_was_measured(self) -> None:
        self.set_language("de")
        self.keep_data()
        template = self.root / TASK2_DE
        before = template.read_bytes()
        (self.root / "Languages/own-film.mp4").write_bytes(b"a film")

        self.computer.dpkg("-i", packages.later)
        self.set_language("it")
        self.assertEqual(template.read_bytes(), before + b"<!-- later -->\n")
        self.assert_catalogues("it")
        self.assert_data_untouched()
        self.assertEqual((self.root / "Languages/own-film.mp4").read_bytes(), b"a film")

        self.computer.dpkg("-r", "kelmoran")
        self.assertFalse((self.computer.system / "usr").exists())
        self.assert_data_untouched()

    def test_two_users_have_their_own_data_and_language(self) -> None:
        other = self.computer.home.with_name("other")
        other.mkdir()
        self.set_language("de")
        self.assertEqual(self.speaks(HOME=other, LANG="nl_NL"), "nl")
        self.assertEqual(self.speaks(), "de")

    def test_the_administrator_may_choose_folder_and_language(self) -> None:
        shared = self.computer.home.with_name("ward")
        settings = self.computer.system / "etc/kelmoran.conf"
        settings.parent.mkdir()
        settings.write_text(f"# of this ward\nROOT={shared}\nLANGUAGE=es\n")
        self.assertEqual(self.speaks(), "es")
        self.set_language("it")
        self.assertTrue((shared / "Languages/Itkelmoran_it.qm").is_file())
        self.assertFalse(self.root.exists())
        self.assertEqual(self.speaks(KELMORAN_ROOT=self.root), "es")
        settings.write_text("ROOT=ward\n")
        self.assert_refused(self.language("de"), 1, f"ROOT in {settings} has to begin with a /")
        settings.write_text("LANGUAGE=pt\n")
        done = run(self.computer.command("kelmoran"), env=self.computer.environment())
        self.assert_refused(done, 1, f"LANGUAGE in {settings} has to be one of")

    def test_a_shared_folder_is_for_its_group_alone(self) -> None:
        shared = self.computer.home.with_name("ward")
        shared.mkdir()
        shared.chmod(0o2770)
        self.assertEqual(self.language("de", KELMORAN_ROOT=shared).returncode, 0)
        for path in shared.rglob("*"):
            mode = stat.S_IMODE(path.stat().st_mode)
            self.assertEqual(mode & 0o007, 0, path)
            if path.is_dir():
                self.assertEqual(mode, 0o2770, path)

    def test_a_rehearsal_in_a_root_of_its_own_files_its_report(self) -> None:
        trial = self.computer.home / "trial"
        self.assertEqual(self.language("--root", str(trial), "fr").returncode, 0)
        run_well(self.computer.command("kelmoran-rehearse"), "--root", trial, "--task", "test2",
                 "--number", "6", "--report", env=self.computer.environment())
        report, = trial.glob("Archives/*/Output_T2_S01_*.pdf")
        self.assertIn("Temps de réaction", run_well("pdftotext", report, "-"))
        self.assertFalse(self.root.exists())


if __name__ == "__main__":
    unittest.main()
