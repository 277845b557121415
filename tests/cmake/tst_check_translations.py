"""check_translations.py on a small invented program: every fault is found and named with context, source and language.

usage: tst_check_translations.py LUPDATE
"""

import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "cmake"))
sys.dont_write_bytecode = True
import check_translations  # noqa: E402
from check_translations import GLOSSARY, HEADER, LANGUAGES, TABLE  # noqa: E402

LUPDATE = sys.argv.pop(1) if len(sys.argv) > 1 else "lupdate"

SOURCES = {
    "src/bar/Bar.h": "class Bar : public QWidget { Q_OBJECT\npublic: void show(); };\n",
    "src/bar/Bar.cpp": '#include "bar/Bar.h"\n'
                       'constexpr const char* words[] = {QT_TRANSLATE_NOOP("Bar", "Level")};\n'
                       'void Bar::show() { say(tr("Level is %1 of %2.")); say(tr("Loading...")); }\n',
    "src/bar/Form.ui": '<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">'
                       '<property name="windowTitle"><string>Level</string></property></widget></ui>\n',
    "src/app/App.cpp": 'QString f() { return QCoreApplication::translate("App", "Localization"); }\n',
    "src/host/Host.cpp": 'QString g() { return QCoreApplication::translate("Host", "Nobody sees this"); }\n',
}

LEVEL = ["Level", "Pegel", "Niveau", "Nivel", "Livello", "Nível", "Уровень", "レベル", "레벨", "电平"]
SENTENCE = ["Level is %1 of %2.", "Pegel: %1 von %2.", "Niveau : %1 de %2.".replace(" :", "\u00a0:"), "Nivel: %1 de %2.",
            "Livello: %1 di %2.", "Nível: %1 de %2.", "Уровень: %1 из %2.", "%2 のうちレベルは %1 です。", "레벨은 %2 중 %1입니다.",
            "%2 中的电平为 %1。"]
LOADING = ["Loading...", "Lädt...", "Chargement...", "Cargando...", "Caricamento...", "Carregando...", "Загрузка...",
           "読み込み中...", "로드 중...", "正在加载..."]
LOCALE = ["en", "de", "fr", "es", "it", "pt_BR", "ru", "ja", "ko", "zh_CN"]
ROWS = [["", "Localization", *LOCALE], ["Bar", "Level", *LEVEL], ["Bar", "Level is %1 of %2.", *SENTENCE],
        ["Bar", "Loading...", *LOADING], ["Form", "Level", *LEVEL]]
BAR_LEVEL, BAR_SENTENCE, BAR_LOADING, FORM_LEVEL = range(1, 5)

GLOSSARY_TEXT = "\n".join(["# Words", "", "| " + " | ".join(LANGUAGES) + " |", "|---" * len(LANGUAGES) + "|",
                           "| " + " | ".join(LEVEL) + " |", "", "After the table.", ""])

# row, language, what its cell becomes, what is said of it
BAD_CELLS = [
    (BAR_LEVEL, "Italian", "", "empty"),
    (BAR_LEVEL, "Italian", " ", "empty"),
    (BAR_LEVEL, "German", "Pegel ", "blanks at the edge"),
    (BAR_LEVEL, "German", "\u00a0Pegel", "blanks at the edge"),
    (BAR_LEVEL, "German", "Pegel  hier", "twice in a row"),
    (BAR_LEVEL, "German", "Pegel\u200b", "control character U+200B"),
    (BAR_LEVEL, "German", "Pegel\u0007", "control character U+0007"),
    (BAR_LEVEL, "German", "Pegel\\nhier", "other line breaks"),
    (BAR_LEVEL, "German", "Pegel\\there", "other tabs"),
    (BAR_LEVEL, "German", "&Pegel", "other ampersands"),
    (BAR_LEVEL, "German", "<b>Pegel</b>", "other markup"),
    (BAR_LEVEL, "German", "<Pegel>", "other angle brackets"),
    (BAR_LEVEL, "German", "Pegel *.wav", "other file patterns"),
    (BAR_LEVEL, "German", "Pegel 10", "other numbers"),
    (BAR_LEVEL, "German", "Pegel'", "straight quote"),
    (BAR_LEVEL, "German", "Pegel\\x", "backslash"),
    (BAR_LEVEL, "English", "The level", "not the source"),
    (BAR_LEVEL, "German", "Leistung", "none of the glossary's words for Level: Pegel"),
    (BAR_LEVEL, "Portuguese", "Ni\u0301vel", "letters and accents apart"),
    (BAR_SENTENCE, "Russian", "Уровень: %1.", "other place-holders"),
    (BAR_SENTENCE, "Russian", "Уровень: %1 из %1.", "other place-holders"),
    (BAR_SENTENCE, "Spanish", "Nivel: %1 de %2", "full stop"),
    (BAR_SENTENCE, "French", "Niveau : %1 de %2.", "without a no-break space"),
    (BAR_SENTENCE, "Japanese", "%2 のうちレベルは %1 です.", "narrow mark"),
    (BAR_SENTENCE, "Simplified Chinese", "%2 中的电平(为) %1。", "narrow mark"),
    (BAR_SENTENCE, "French", "«Niveau»\u00a0: %1 de %2.", "guillemet"),
    (BAR_SENTENCE, "Japanese", "%2 のうちレベル (今) は %1 です。", "narrow brackets"),
    (BAR_SENTENCE, "Korean", "레벨은 %2 중 %1입니다。", "wide mark"),
    (BAR_LOADING, "German", "Lädt", "other ellipses"),
    (FORM_LEVEL, "Korean", "레벨값", '"레벨" in the context "Bar"'),
    (0, "French", "French", "no locale"),
]


class CheckTranslations(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        for name, text in SOURCES.items():
            self.write(name, text)
        self.write(GLOSSARY, GLOSSARY_TEXT)
        self.rows = [list(row) for row in ROWS]

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8", newline="")

    def check(self, header=HEADER):
        """The exit code and the lines that were printed, with the rows as they are now."""
        self.write(TABLE, "".join("\t".join(row) + "\n" for row in [header, *self.rows]))
        return self.run_check(self.root)

    @staticmethod
    def run_check(root, lupdate=LUPDATE):
        output, errors = io.StringIO(), io.StringIO()
        with contextlib.redirect_stdout(output), contextlib.redirect_stderr(errors):
            code = check_translations.main([str(root), "--lupdate", lupdate])
        return code, (output.getvalue() + errors.getvalue()).splitlines()

    def assert_findings(self, *expected):
        """Exactly so many findings, each with all the parts of one of the expected."""
        code, lines = self.check()
        self.assertEqual(code, 1, lines)
        self.assertEqual(len(lines) - 1, len(expected), lines)
        for line, parts in zip(lines, expected):
            for part in parts:
                self.assertIn(part, line)

    def test_whole_table_is_clean(self):
        self.assertEqual(self.check(), (0, ["5 texts in 10 languages, 0 findings"]))

    def test_bad_cell(self):
        for index, language, cell, said in BAD_CELLS:
            with self.subTest(language=language, cell=cell):
                self.rows = [list(row) for row in ROWS]
                row = self.rows[index]
                row[HEADER.index(language)] = cell
                code, lines = self.check()
                self.assertEqual(code, 1, lines)
                found = [line for line in lines if said in line]
                self.assertEqual(len(found), 1, lines)
                self.assertTrue(found[0].startswith(f"{TABLE}:{index + 2}: "), found)
                if said != "backslash":
                    self.assertIn(f'context "{row[0]}", source "{row[1]}", {language}: ', found[0])

    def test_every_language_is_looked_at(self):
        for language in LANGUAGES:
            with self.subTest(language=language):
                self.rows = [list(row) for row in ROWS]
                self.rows[BAR_LOADING][HEADER.index(language)] = ""
                self.assert_findings(['context "Bar", source "Loading...", ' + language, "empty"])

    def test_every_rule_of_a_table_is_tried(self):
        said = [said for _, _, _, said in BAD_CELLS]
        for name, _ in check_translations.KEPT:
            self.assertIn(f"other {name}", said)
        for _, _, reason in check_translations.TYPOGRAPHY:
            self.assertTrue(any(part in reason for part in said), reason)

    def test_missing_row(self):
        del self.rows[FORM_LEVEL]
        self.assert_findings(['context "Form", source "Level"', "no row", "German", "Simplified Chinese"])

    def test_unused_row(self):
        self.rows.insert(1, ["Bar", "Gone", *["Gone"] * len(LANGUAGES)])
        self.assert_findings([f"{TABLE}:3:", 'context "Bar", source "Gone"', "no such text"])

    def test_row_of_another_program_is_unused(self):
        self.rows.append(["Host", "Nobody sees this", *["Nobody sees this"] * len(LANGUAGES)])
        self.assert_findings(['context "Host"', "no such text"])

    def test_row_without_context_serves_the_others(self):
        del self.rows[FORM_LEVEL]
        self.rows.insert(0, ["", "Level", *LEVEL])
        self.assertEqual(self.check()[0], 0)

    def test_row_without_context_that_serves_none(self):
        self.rows.insert(0, ["", "Level", *LEVEL])
        self.assert_findings(['context "", source "Level"', "no such text"])

    def test_locale_row_is_wanted(self):
        self.write("src/app/App.cpp", "")
        self.assertEqual(self.check()[0], 0)
        del self.rows[0]
        self.assert_findings(['source "Localization"', "no row"])

    def test_order(self):
        self.rows[1], self.rows[2] = self.rows[2], self.rows[1]
        self.assert_findings([f"{TABLE}:4:", 'source "Level"', "belongs before line 3"])

    def test_row_twice(self):
        self.rows.insert(2, list(self.rows[1]))
        self.assert_findings([f"{TABLE}:4:", 'context "Bar", source "Level"', "twice"])

    def test_too_few_cells(self):
        self.rows[FORM_LEVEL].pop()
        self.assert_findings([f"{TABLE}:6:", "11 cells instead of 12"], ['context "Form", source "Level"', "no row"])

    def test_other_header(self):
        code, lines = self.check(header=HEADER[:-1])
        self.assertEqual(code, 1)
        self.assertIn(f"{TABLE}:1: the first line shall be Context Source English", lines[0])

    def test_not_utf8(self):
        self.check()
        (self.root / TABLE).write_bytes(b"Context\n\xff\n")
        code, lines = self.run_check(self.root)
        self.assertEqual((code, lines[0]), (1, f"{TABLE}:2: not UTF-8"))

    def test_line_ends(self):
        for data in ("\r\n".join(["\t".join(HEADER), ""]), "\ufeff" + "\t".join(HEADER) + "\n", "\t".join(HEADER)):
            with self.subTest(data=data):
                self.write(TABLE, data)
                code, lines = self.run_check(self.root)
                self.assertEqual(code, 1)
                self.assertIn("a newline alone", lines[0])

    def test_text_without_sure_context(self):
        self.write("src/bar/Bar.cpp", SOURCES["src/bar/Bar.cpp"].replace('#include "bar/Bar.h"', ""))
        self.assert_findings(["lupdate: ", "Bar.cpp:3"])

    def test_what_the_table_does_not_know(self):
        for source, arguments in (("%n levels", "nullptr, 3"), ("Level", '"of the sea"')):
            with self.subTest(arguments=arguments):
                self.write("src/bar/Bar.cpp", SOURCES["src/bar/Bar.cpp"] + f'void Bar::more() {{ tr("{source}", {arguments}); }}\n')
                code, lines = self.check()
                self.assertEqual(code, 1, lines)
                self.assertIn(f'src: context "Bar", source "{source}": the table knows neither plural forms', lines[0])

    def test_glossary_without_a_word(self):
        self.write(GLOSSARY, GLOSSARY_TEXT.replace("| Niveau ", "|  "))
        self.assert_findings([GLOSSARY, "'Level'", "not a word for each language"])

    def test_glossary_with_a_term_of_no_text(self):
        self.write(GLOSSARY, GLOSSARY_TEXT.replace("| Level ", "| Level | x" + " | x" * 8 + " |\n| Hertz "))
        code, lines = self.check()
        self.assertEqual(code, 1)
        self.assertIn(f"{GLOSSARY}: no text of the table has the term 'Hertz'", lines)

    def test_longest_term_goes_first_and_a_term_may_have_forms(self):
        self.write("src/bar/More.cpp", 'void f() { QCoreApplication::translate("More", "Level Step"); }\n')
        step = ["Level Step", "Pegelschritt", *["x"] * 8]
        self.rows.append(["More", "Level Step", *step])
        line = "| Level Step | Stufe / Pegelschritt" + " | x" * 8 + " |\n| Level "
        self.write(GLOSSARY, GLOSSARY_TEXT.replace("| Level ", line, 1))
        self.assertEqual(self.check()[0], 0)

    def test_what_is_missing_is_said(self):
        for name in (TABLE, GLOSSARY):
            with self.subTest(name=name):
                self.check()
                (self.root / name).unlink()
                code, lines = self.run_check(self.root)
                self.assertEqual(code, 2)
                self.assertIn(name, lines[0])
                self.write(GLOSSARY, GLOSSARY_TEXT)

    def test_no_tool(self):
        self.check()
        code, lines = self.run_check(self.root, "no-such-lupdate")
        self.assertEqual(code, 2)
        self.assertIn("cmake/install_packages.sh test", lines[0])

    def test_tree_without_texts_is_refused(self):
        for name in SOURCES:
            self.write(name, "")
        self.assertEqual(self.check()[0], 2)


if __name__ == "__main__":
    unittest.main()
