"""check_layers.py on small invented trees: every kind of breach is found, and nothing else is."""

import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "cmake"))
sys.dont_write_bytecode = True
import check_layers  # noqa: E402

LAYERS = """# target folder modules arrows
ground       ground        Core         -
wire         wire          Core         ground
wire_client  wire/client   Core,Network wire
top          top           Core,Widgets wire_client,ground
"""

QT = {
    "QtCore": ["QObject", "qobject.h", "QtCore", "QtGlobal"],
    "QtNetwork": ["QLocalSocket"],
    "QtWidgets": ["QWidget", "qwidget.h", "QtWidgets"],
}


class CheckLayers(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        for module, headers in QT.items():
            for header in headers:
                self.write(f"qt/{module}/{header}", "")
        self.write("cmake/layers.txt", LAYERS)
        for header in ("ground/Ground.h", "wire/Wire.h", "wire/client/Client.h", "top/Top.h"):
            self.write(f"src/{header}", "#pragma once\n")

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def check(self, qt_folder="qt"):
        """The exit code and the lines that name breaches."""
        output = io.StringIO()
        self.warnings = io.StringIO()
        with contextlib.redirect_stdout(output), contextlib.redirect_stderr(self.warnings):
            code = check_layers.main([str(self.root), "--qt-include", str(self.root / qt_folder)])
        return code, output.getvalue().splitlines()[:-1]

    def assert_clean(self, name, text):
        self.write(name, text)
        self.assertEqual(self.check(), (0, []))

    def assert_breach(self, name, text, *expected):
        self.write(name, text)
        code, breaches = self.check()
        self.assertEqual(code, 1)
        self.assertEqual(breaches, list(expected))

    def test_untouched_tree_is_clean(self):
        self.assertEqual(self.check(), (0, []))

    def test_allowed_includes_are_clean(self):
        self.assert_clean("src/top/a.cpp", '#include "top/Top.h"\n#include "wire/client/Client.h"\n#include <QWidget>\n'
                          '#include <QtCore/QObject>\n#include <qobject.h>\n#include <QtGlobal>\n#include <vector>\n'
                          '#include "ui_Top.h"\n#include "a.moc"\n')

    def test_arrow_that_is_not_listed(self):
        self.assert_breach("src/ground/a.cpp", '\n#include "wire/Wire.h"\n',
                           "src/ground/a.cpp:2: 'ground' may not use 'wire' (wire/Wire.h)")

    def test_arrows_are_not_inherited(self):
        self.assert_breach("src/top/a.cpp", '#include "wire/Wire.h"\n',
                           "src/top/a.cpp:1: 'top' may not use 'wire' (wire/Wire.h)")

    def test_angle_brackets_hide_nothing(self):
        self.assert_breach("src/ground/a.cpp", "  #  include <wire/Wire.h> // no\n",
                           "src/ground/a.cpp:1: 'ground' may not use 'wire' (wire/Wire.h)")

    def test_longest_folder_wins_for_the_header(self):
        self.assert_breach("src/wire/a.cpp", '#include "wire/client/Client.h"\n',
                           "src/wire/a.cpp:1: 'wire' may not use 'wire_client' (wire/client/Client.h)")

    def test_longest_folder_wins_for_the_file(self):
        self.assert_clean("src/wire/client/a.cpp", "#include <QLocalSocket>\n")
        self.assert_breach("src/wire/a.cpp", "#include <QLocalSocket>\n",
                           "src/wire/a.cpp:1: 'wire' may not use QtNetwork (<QLocalSocket>)")

    def test_qt_class_header_of_another_module(self):
        self.assert_breach("src/ground/Ground.h", "#pragma once\n#include <QWidget>\n",
                           "src/ground/Ground.h:2: 'ground' may not use QtWidgets (<QWidget>)")

    def test_qt_header_in_every_spelling(self):
        for spelling in ("QtWidgets/QWidget", "QtWidgets", "qwidget.h", "QtWidgets/qwidget.h"):
            with self.subTest(spelling):
                self.assert_breach("src/ground/a.cpp", f"#include <{spelling}>\n",
                                   f"src/ground/a.cpp:1: 'ground' may not use QtWidgets (<{spelling}>)")

    def test_qt_header_that_no_module_has(self):
        self.assert_breach("src/top/a.cpp", "#include <QNowhere>\n",
                           "src/top/a.cpp:1: no Qt module has the public header <QNowhere>")
        self.assert_breach("src/top/a.cpp", "#include <QtCore/private/qobject_p.h>\n",
                           "src/top/a.cpp:1: no Qt module has the public header <QtCore/private/qobject_p.h>")

    def test_private_header(self):
        self.assert_breach("src/top/a.cpp", "#include <private/qobject_p.h>\n",
                           "src/top/a.cpp:1: <private/qobject_p.h> is a private header")

    def test_relative_include(self):
        self.assert_breach("src/top/a.cpp", '#include "../wire/Wire.h"\n',
                           'src/top/a.cpp:1: "../wire/Wire.h" is relative: include from the src folder, '
                           'as in "top/Name.h"')

    def test_include_without_folder(self):
        self.assert_breach("src/top/a.cpp", '#include "Top.h"\n',
                           'src/top/a.cpp:1: "Top.h" lies in no folder of the layers: include from the src folder, '
                           'as in "top/Name.h"')

    def test_include_by_macro(self):
        self.assert_breach("src/top/a.cpp", "#include HEADER\n",
                           "src/top/a.cpp:1: the included header is named by a macro: the check cannot read it")

    def test_comments_are_not_includes(self):
        self.assert_clean("src/ground/a.cpp", '// #include "top/Top.h"\n/*\n#include "top/Top.h"\n*/\n')

    def test_a_comment_does_not_hide_the_next_include(self):
        self.assert_breach("src/ground/a.cpp", '// a/*b\n/* c\n*/\nauto d = "/*";\n#include "top/Top.h"\n// */\n',
                           "src/ground/a.cpp:5: 'ground' may not use 'top' (top/Top.h)")

    def test_form_with_a_promoted_widget(self):
        self.assert_clean("src/top/a.ui", "<ui>\n<header>top/Top.h</header></ui>\n")
        self.assert_breach("src/top/a.ui", '<ui>\n<header location="global">wire/Wire.h</header></ui>\n',
                           "src/top/a.ui:2: 'top' may not use 'wire' (wire/Wire.h)")

    def test_file_in_no_listed_folder(self):
        self.assert_breach("src/attic/a.cpp", "", "src/attic/a.cpp:1: the file lies in no folder of cmake/layers.txt")

    def test_folder_whose_name_begins_like_a_listed_one(self):
        self.assert_breach("src/grounded/a.cpp", "",
                           "src/grounded/a.cpp:1: the file lies in no folder of cmake/layers.txt")

    def test_file_beside_the_folders(self):
        self.assert_breach("src/a.cpp", "", "src/a.cpp:1: the file lies in no folder of cmake/layers.txt")

    def test_circle_of_arrows(self):
        self.assert_breach("cmake/layers.txt", LAYERS.replace("Core         -", "Core         wire"),
                           "cmake/layers.txt:2: the arrows make a circle: ground -> wire -> ground",
                           "cmake/layers.txt:3: the arrows make a circle: wire -> ground -> wire")

    def test_arrow_to_an_unknown_target(self):
        self.assert_breach("cmake/layers.txt", LAYERS.replace("wire_client,ground", "wire_client,cellar"),
                           "cmake/layers.txt:5: 'top' may use 'cellar', which is no target of the list")

    def test_unknown_qt_module(self):
        self.assert_breach("cmake/layers.txt", LAYERS.replace("Core,Widgets", "Core,Windows"),
                           "cmake/layers.txt:5: there is no Qt module 'Windows'")

    def test_target_and_folder_listed_twice(self):
        self.assert_breach("cmake/layers.txt", LAYERS + "ground ground Core -\n",
                           "cmake/layers.txt:6: the target 'ground' stands in line 2 already",
                           "cmake/layers.txt:6: the folder 'ground' stands in line 2 already")

    def test_malformed_line(self):
        self.assert_breach("cmake/layers.txt", LAYERS + "\nattic attic Core\n",
                           "cmake/layers.txt:7: a layer is four fields from the first column on: "
                           "target, folder, Qt modules, may use")

    def test_empty_folder_is_only_a_warning(self):
        self.assert_clean("cmake/layers.txt", LAYERS + "attic attic Core -\n")
        self.assertIn("cmake/layers.txt:6: the folder src/attic has no source files", self.warnings.getvalue())

    def test_folder_of_one_module_leads_to_no_others(self):
        self.assertEqual(self.check(qt_folder="qt/QtCore")[1],
                         ["cmake/layers.txt:4: there is no Qt module 'Network'",
                          "cmake/layers.txt:5: there is no Qt module 'Widgets'"])

    def test_without_qt_headers_the_check_refuses(self):
        self.assertEqual(self.check(qt_folder="wire")[0], 2)
        self.assertIn("Qt's headers were not found", self.warnings.getvalue())


if __name__ == "__main__":
    unittest.main()
