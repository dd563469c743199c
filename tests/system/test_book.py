"""The instruction books, page by page, as a reader of the PDF finds them."""

import os
import re
import subprocess
import unittest
from pathlib import Path

LANGUAGES = ("en", "fr", "de", "it", "es", "nl")
CHAPTERS = 10
# What tells the language: letters and a word of the first page.
WORDS = {"en": "Contents", "fr": "matières", "de": "Gedächtnis", "it": "Indice", "es": "Índice",
         "nl": "geheugen"}
A_CHAPTER = re.compile(r"^(\d+)\. (.+?)\s+(\d+)$")


def pages_of(language: str) -> list[list[str]]:
    """The lines of each page, without those that are empty."""
    folder = Path(os.environ["KELMORAN_BUILD"]) / "languages"
    text = subprocess.run(
        ["pdftotext", "-layout", folder / f"Kelmoran_Instruction-book_{language}.pdf", "-"],
        capture_output=True, check=True).stdout.decode()
    pages = text.split("\f")[:-1]
    return [[line.strip() for line in page.splitlines() if line.strip()] for page in pages]


def contents_of(page: list[str]) -> list[tuple[str, int]]:
    """The chapters and their pages, as the first page tells them."""
    found = (A_CHAPTER.match(line) for line in page)
    return [(f"{entry[1]}. {entry[2]}", int(entry[3])) for entry in found if entry]


class Book(unittest.TestCase):
    def test_a_chapter_begins_on_the_page_that_the_contents_tell(self) -> None:
        for language in LANGUAGES:
            with self.subTest(language):
                pages = pages_of(language)
                contents = contents_of(pages[0])
                self.assertEqual([int(title.split(".")[0]) for title, _ in contents],
                                 list(range(1, CHAPTERS + 1)))
                for title, number in contents:
                    found = [at for at, lines in enumerate(pages, 1) if title in lines]
                    self.assertEqual(found, [number], title)

    def test_every_page_has_its_number_and_no_heading_at_its_foot(self) -> None:
        for language in LANGUAGES:
            with self.subTest(language):
                pages = pages_of(language)
                titles = {title for title, _ in contents_of(pages[0])}
                for number, lines in enumerate(pages, 1):
                    self.assertEqual(lines[-1], str(number))
                    self.assertNotIn(lines[-2:-1], [[title] for title in titles])

    def test_a_book_is_in_its_language(self) -> None:
        for language in LANGUAGES:
            with self.subTest(language):
                text = "\n".join(line for lines in pages_of(language) for line in lines)
                self.assertIn(WORDS[language], text)
                self.assertNotIn("v_contents", text)


if __name__ == "__main__":
    unittest.main()
