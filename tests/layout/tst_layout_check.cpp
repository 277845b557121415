#include "controls/ElidedLabel.h"
#include "layout/LayoutCheck.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QTest>
#include <functional>

namespace {

using Build = std::function<void(QWidget*)>;

const QString longText = QStringLiteral("A text that is far too long for the room that it is given here");
constexpr QRect narrow(10, 10, 90, 30);
constexpr QRect wide(10, 10, 600, 30);

template <typename Widget>
Widget* add(QWidget* window, const QRect& place, const QString& text = QStringLiteral("Text"))
{
    auto* const widget = new Widget(window);
    widget->setObjectName(QStringLiteral("part"));
    widget->setText(text);
    widget->setGeometry(place);
    return widget;
}

Controls::ElidedLabel* addElided(QWidget* window)
{
    auto* const label = add<Controls::ElidedLabel>(window, narrow, longText);
    label->setToolTip(QString());
    return label;
}

QTableWidget* addTable(QWidget* window, const QString& header, const QString& cell)
{
    auto* const table = new QTableWidget(1, 1, window);
    table->setObjectName(QStringLiteral("part"));
    table->setGeometry(10, 10, 300, 200);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setTextElideMode(Qt::ElideRight);
    table->setHorizontalHeaderItem(0, new QTableWidgetItem(header));
    table->setItem(0, 0, new QTableWidgetItem(cell));
    table->setColumnWidth(0, 90);
    return table;
}

struct Row
{
    const char* name;
    const char* fault; // how it begins; none for nullptr
    Build build;
};

std::vector<Row> textRows()
{
    return {
        {"label that fits", nullptr, [](QWidget* window) { add<QLabel>(window, wide, longText); }},
        {"label too narrow", "cut: part: A text",
         [](QWidget* window) { add<QLabel>(window, narrow, longText); }},
        {"label too low", "cut: part: Text",
         [](QWidget* window) {
             add<QLabel>(window, {10, 10, 90, 4});
         }},
        {"label too narrow, told by its tool tip", nullptr,
         [](QWidget* window) { add<QLabel>(window, narrow, longText)->setToolTip(longText); }},
        {"label too narrow, with another tool tip", "cut: part: A text",
         [](QWidget* window) {
             add<QLabel>(window, narrow, longText)->setToolTip(QStringLiteral("A text"));
         }},
        {"label in lines", nullptr,
         [](QWidget* window) {
             add<QLabel>(window, {10, 10, 300, 90}, longText)->setWordWrap(true);
         }},
        {"label in too many lines", "cut: part:",
         [](QWidget* window) {
             add<QLabel>(window, {10, 10, 300, 20}, longText)->setWordWrap(true);
         }},
        {"label without room", "no text: part: Text",
         [](QWidget* window) {
             add<Controls::ElidedLabel>(window, {10, 10, 0, 30});
         }},
        {"shortened label", "cut: part: A te", [](QWidget* window) { addElided(window); }},
        {"shortened label, told by its parent", nullptr,
         [](QWidget* window) {
             window->setToolTip(longText);
             addElided(window);
         }},
        {"button that fits", nullptr, [](QWidget* window) { add<QPushButton>(window, wide, longText); }},
        {"button too narrow", "cut: part: A text",
         [](QWidget* window) { add<QPushButton>(window, narrow, longText); }},
    };
}

std::vector<Row> cellRows()
{
    const QString text = QStringLiteral("Text");
    return {
        {"header and cell that fit", nullptr, [text](QWidget* window) { addTable(window, text, text); }},
        {"header too narrow", "cut: part/", [text](QWidget* window) { addTable(window, longText, text); }},
        {"header too narrow, with a tool tip", nullptr,
         [text](QWidget* window) {
             addTable(window, longText, text)->horizontalHeaderItem(0)->setToolTip(longText);
         }},
        {"cell too narrow", "cut: part/", [text](QWidget* window) { addTable(window, text, longText); }},
        {"cell too narrow, with a tool tip", nullptr,
         [text](QWidget* window) { addTable(window, text, longText)->item(0, 0)->setToolTip(longText); }},
        {"rows to scroll to", nullptr,
         [](QWidget* window) {
             auto* const list = new QListWidget(window);
             list->setGeometry(10, 10, 300, 50);
             for (int i = 0; i < 20; ++i)
                 list->addItem(QString::number(i));
         }},
    };
}

std::vector<Row> placeRows()
{
    return {
        {"side by side", nullptr,
         [](QWidget* window) {
             add<QLabel>(window, {10, 10, 90, 30});
             add<QLabel>(window, {100, 10, 90, 30});
         }},
        {"one over the other", "overlap: part: other",
         [](QWidget* window) {
             add<QPushButton>(window, {10, 10, 90, 30})->setObjectName(QStringLiteral("other"));
             add<QPushButton>(window, {99, 39, 90, 30});
         }},
        {"one over a hidden one", nullptr,
         [](QWidget* window) {
             add<QPushButton>(window, {10, 10, 90, 30})->setVisible(false);
             add<QPushButton>(window, {10, 10, 90, 30});
         }},
        {"beyond its parent", "outside: part: 90x30",
         [](QWidget* window) {
             add<QPushButton>(window, {620, 10, 90, 30});
         }},
        {"beyond what is in view", nullptr,
         [](QWidget* window) {
             auto* const area = new QScrollArea(window);
             area->setGeometry(10, 10, 200, 100);
             auto* const content = new QWidget;
             content->resize(150, 900);
             add<QPushButton>(content, {10, 800, 90, 30});
             area->setWidget(content);
         }},
        {"window beyond the screen", "outside: :", [](QWidget* window) { window->move(1000, 700); }},
        {"text over text", "text over text: part: ",
         [](QWidget* window) {
             class Twice : public QLabel
             {
             public:
                 using QLabel::QLabel;
                 void paintEvent(QPaintEvent* event) override
                 {
                     QLabel::paintEvent(event);
                     QPainter(this).drawText(0, height() / 2, QStringLiteral("Other"));
                 }
             };
             add<Twice>(window, narrow);
         }},
        {"sign without a name", "nameless: part: ^",
         [](QWidget* window) { add<QPushButton>(window, narrow, QStringLiteral("^")); }},
        {"icon without a name",
         "nameless: part: ", [](QWidget* window) { add<QPushButton>(window, narrow, QString()); }},
        {"sign with a name", nullptr,
         [](QWidget* window) {
             add<QPushButton>(window, narrow, QStringLiteral("v"))->setAccessibleName(QStringLiteral("Open"));
         }},
        {"sign with a tool tip", nullptr,
         [](QWidget* window) {
             add<QPushButton>(window, narrow, QStringLiteral("v"))->setToolTip(QStringLiteral("Open"));
         }},
        {"digit", nullptr, [](QWidget* window) { add<QPushButton>(window, narrow, QStringLiteral("7")); }},
    };
}

} // namespace

Q_DECLARE_METATYPE(Build)

// Widgets that are broken on purpose: the checker finds the one fault of each, and nothing else.
class LayoutCheckTest final : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
};

void LayoutCheckTest::faults_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<Build>("build");
    for (const auto& rows : {textRows(), cellRows(), placeRows()}) {
        for (const Row& row : rows)
            QTest::newRow(row.name) << QString::fromLatin1(row.fault) << row.build;
    }
}

void LayoutCheckTest::faults()
{
    QFETCH(const QString, fault);
    QFETCH(const Build, build);
    QWidget window;
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setGeometry(100, 100, 640, 400);
    build(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QStringList found = layoutFaults(&window);
    const QByteArray report = found.join(QLatin1Char('\n')).toUtf8();
    QVERIFY2(found.size() == (fault.isEmpty() ? 0 : 1), report.constData());
    QVERIFY2(fault.isEmpty() || found.first().startsWith(fault), report.constData());
}

QTEST_MAIN(LayoutCheckTest)
#include "tst_layout_check.moc"
