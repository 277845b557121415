#include "simulator/MainWindow.h"

#include "simulator/QuantitySpinBox.h"
#include "simulator/QuantityText.h"
#include "simulator/SignalGenerator.h"
#include "simulator/SummaryTexts.h"
#include "simulator/TwoWaySwitch.h"
#include "utils/NumberText.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTime>
#include <QTimer>
#include <QVBoxLayout>

namespace Simulator {

namespace {

constexpr int margin = 16;
constexpr int gap = 12;
constexpr int windowWidth = 448;
constexpr int shownRequests = 4;
constexpr int statusLines = 2;    // for which there is always room
constexpr int controlWidth = 193; // two halves of a switch with their borders

QString frequencyText(double hz)
{
    return Utils::normalizeFrequency(hz, true, true);
}

QString levelText(double dbm)
{
    return QString(Utils::toString(dbm, 3, true) + QLatin1String(" dBm"));
}

QuantitySpinBox::Quantity frequencyQuantity()
{
    return {SignalGenerator::minimumHz, SignalGenerator::maximumHz, 1e6, frequencyText,
            [](const QString& text, double shown) { return parseFrequency(text, shownFactor(shown)); }};
}

QuantitySpinBox::Quantity levelQuantity()
{
    return {SignalGenerator::minimumDbm, SignalGenerator::maximumDbm, 1, levelText,
            [](const QString& text, double /*shown*/) { return parseLevel(text); }};
}

void setRole(QWidget* widget, const char* role)
{
    widget->setProperty("role", QString::fromLatin1(role));
}

QLabel* secondaryLabel(const QString& text)
{
    auto* label = new QLabel(text);
    setRole(label, "secondary");
    return label;
}

QFrame* panel()
{
    auto* frame = new QFrame;
    setRole(frame, "panel");
    return frame;
}

QFrame* line()
{
    auto* frame = new QFrame;
    setRole(frame, "line");
    frame->setFixedHeight(1);
    return frame;
}

} // namespace

MainWindow::MainWindow(SignalGenerator& instrument, QWidget* parent)
    : QWidget(parent)
    , m_instrument(instrument)
{
    setObjectName(QStringLiteral("simulatorWindow"));
    setAttribute(Qt::WA_StyledBackground);
    setWindowTitle(tr("Tarvinel Simulator"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(gap);
    layout->addWidget(buildHeader());
    layout->addWidget(buildInstrumentPanel());
    layout->addWidget(buildMiniBarPanel(), 1);
    connect(&m_instrument, &SignalGenerator::changed, this, &MainWindow::refresh);
    refresh();
    setMinimumWidth(windowWidth);
    m_minimise->setFocus();
}

QPoint MainWindow::topRight() const
{
    return frameGeometry().topRight();
}

QWidget* MainWindow::buildHeader()
{
    auto* header = new QWidget;
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel(tr("Signal generator"));
    title->setObjectName(QStringLiteral("title"));
    m_openSwitch = new TwoWaySwitch(tr("Closed"), tr("Open"), tr("Instrument"));
    m_openSwitch->setFixedWidth(controlWidth);
    m_openSwitch->setObjectName(QStringLiteral("openSwitch"));
    connect(m_openSwitch, &TwoWaySwitch::wanted, &m_instrument, &SignalGenerator::setOpen);
    layout->addWidget(title, 1);
    layout->addWidget(m_openSwitch);
    // The switch stands in line with the controls of the panel below.
    layout->setContentsMargins(margin, 0, margin + 1, 0);
    return header;
}

QWidget* MainWindow::buildInstrumentPanel()
{
    QFrame* frame = panel();
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(margin, gap, margin, gap);
    grid->setHorizontalSpacing(margin);
    grid->setVerticalSpacing(gap);
    grid->setColumnStretch(0, 1);

    m_frequency = new QuantitySpinBox(frequencyQuantity());
    m_frequency->setObjectName(QStringLiteral("frequencyField"));
    connect(m_frequency, qOverload<double>(&QDoubleSpinBox::valueChanged), &m_instrument,
            &SignalGenerator::setCenterHz);
    addRow(grid, tr("Centre frequency"),
           tr("%1 to %2")
               .arg(frequencyText(SignalGenerator::minimumHz), frequencyText(SignalGenerator::maximumHz)),
           m_frequency);

    m_level = new QuantitySpinBox(levelQuantity());
    m_level->setObjectName(QStringLiteral("levelField"));
    connect(m_level, qOverload<double>(&QDoubleSpinBox::valueChanged), &m_instrument,
            &SignalGenerator::setLevelDbm);
    addRow(grid, tr("Level"),
           tr("%1 to %2")
               .arg(Utils::toString(SignalGenerator::minimumDbm, 0, true),
                    levelText(SignalGenerator::maximumDbm)),
           m_level);

    m_rfSwitch = new TwoWaySwitch(tr("OFF"), tr("ON"), tr("RF output"));
    m_rfSwitch->setObjectName(QStringLiteral("rfSwitch"));
    connect(m_rfSwitch, &TwoWaySwitch::wanted, &m_instrument, &SignalGenerator::setRfOn);
    addRow(grid, tr("RF output"), QString(), m_rfSwitch);
    m_sweep = addShownRow(grid, tr("Sweep"), QStringLiteral("sweep"));
    m_modulation = addShownRow(grid, tr("Modulation"), QStringLiteral("modulation"));
    return frame;
}

void MainWindow::addRow(QGridLayout* grid, const QString& caption, const QString& hint, QWidget* control)
{
    if (grid->count() > 0)
        grid->addWidget(line(), grid->rowCount(), 0, 1, 2);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(new QLabel(caption));
    if (!hint.isEmpty())
        texts->addWidget(secondaryLabel(hint));
    control->setFixedWidth(controlWidth);
    control->setAccessibleName(caption);
    control->setAccessibleDescription(hint);
    const int row = grid->rowCount();
    grid->addLayout(texts, row, 0, Qt::AlignVCenter);
    grid->addWidget(control, row, 1);
}

MainWindow::ShownSetting MainWindow::addShownRow(QGridLayout* grid, const QString& caption,
                                                 const QString& name)
{
    const ShownSetting setting{secondaryLabel(QString()), new QLabel};
    setting.detail->setObjectName(name + QStringLiteral("Detail"));
    setting.detail->setAccessibleName(caption);
    setting.state->setObjectName(name + QStringLiteral("State"));
    setting.state->setAccessibleName(caption);
    setting.state->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(new QLabel(caption));
    texts->addWidget(setting.detail);
    auto* cells = new QHBoxLayout;
    cells->setSpacing(margin);
    cells->addLayout(texts, 1);
    cells->addWidget(setting.state);
    grid->addWidget(line(), grid->rowCount(), 0, 1, 2);
    grid->addLayout(cells, grid->rowCount(), 0, 1, 2);
    return setting;
}

QWidget* MainWindow::buildMiniBarPanel()
{
    QFrame* frame = panel();
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(margin, gap, margin, gap);
    layout->setSpacing(gap);

    m_minimise = new QPushButton(tr("Minimise to mini bar"));
    m_minimise->setObjectName(QStringLiteral("minimiseButton"));
    m_minimise->setAccessibleName(m_minimise->text());
    connect(m_minimise, &QPushButton::clicked, this, &MainWindow::minimiseWanted);

    m_status = new QLabel;
    m_status->setObjectName(QStringLiteral("statusLine"));
    m_status->setAccessibleName(tr("State of the mini bar"));
    m_status->setWordWrap(true);
    m_status->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_status->ensurePolished();
    m_status->setText(
        QStringLiteral("\n").repeated(statusLines - 1)); // lines are not always whole pixels high
    m_status->setMinimumHeight(m_status->sizeHint().height());
    m_status->clear();

    m_requests = secondaryLabel(tr("No requests yet."));
    m_requests->setObjectName(QStringLiteral("lastRequests"));
    m_requests->setAccessibleName(tr("Last requests"));
    m_requests->setWordWrap(true);
    m_requests->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_requests->ensurePolished(); // the style sheet decides about the height of a line
    m_requests->setMinimumHeight(shownRequests * m_requests->fontMetrics().lineSpacing() + gap);

    layout->addWidget(m_minimise);
    layout->addWidget(m_status);
    layout->addWidget(line());
    layout->addWidget(m_requests, 1);
    return frame;
}

void MainWindow::showStatus(const QString& status)
{
    m_status->setText(status);
    // A longer sentence must not take its room from the instrument's panel. The panel's layout tells the
    // window's what it needs only when it is activated.
    m_status->parentWidget()->layout()->activate();
    const int needed = layout()->totalHeightForWidth(width());
    if (windowHandle() && needed > height()) // before it was ever shown it has no size of its own
        resize(width(), needed);
}

void MainWindow::addRequest(const QString& request, const QString& outcome)
{
    const QString time = QTime::currentTime().toString(Qt::ISODate);
    m_requestLines.prepend({time, request, outcome});
    if (m_requestLines.size() > shownRequests)
        m_requestLines.removeLast();
    QString table = QStringLiteral("<table width='100%' cellspacing='0'>");
    QStringList plain;
    for (const QStringList& cells : qAsConst(m_requestLines)) {
        table += QStringLiteral("<tr><td>%1&nbsp;&nbsp;%2</td><td align='right'>%3</td></tr>")
                     .arg(cells.at(0), cells.at(1).toHtmlEscaped(), cells.at(2).toHtmlEscaped());
        plain += cells.join(QLatin1Char(' '));
    }
    m_requests->setText(table + QLatin1String("</table>"));
    m_requests->setAccessibleDescription(plain.join(QLatin1Char('\n')));
}

void MainWindow::bringBack()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void MainWindow::ShownSetting::show(const QString& text, bool on, bool enabled) const
{
    detail->setText(text);
    state->setText(on ? MainWindow::tr("ON") : MainWindow::tr("OFF"));
    detail->setEnabled(enabled);
    state->setEnabled(enabled);
}

void MainWindow::refresh()
{
    const QSignalBlocker frequencyBlocker(m_frequency);
    const QSignalBlocker levelBlocker(m_level);
    const bool open = m_instrument.isOpen();
    m_openSwitch->setShownState(open);
    m_rfSwitch->setShownState(m_instrument.isRfOn());
    m_frequency->setValue(m_instrument.centerHz());
    m_level->setValue(m_instrument.levelDbm());
    m_frequency->setEnabled(open);
    m_level->setEnabled(open);
    m_rfSwitch->setEnabled(open);
    m_sweep.show(sweepSummary(m_instrument), m_instrument.sweep().settings.enabled, open);
    m_modulation.show(modulationSummary(m_instrument), m_instrument.modulation().enabledItem() != nullptr,
                      open);
}

void MainWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || !isMinimized())
        return;
    // Outside of the event: the window manager is told nothing while it tells us something.
    QTimer::singleShot(0, this, &MainWindow::minimiseWanted);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the program closes the mini bar first
    emit closeRequested();
}

} // namespace Simulator
