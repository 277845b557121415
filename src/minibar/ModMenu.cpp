#include "minibar/ModMenu.h"

#include "minibar/Placement.h"
#include "minibar/ScreenLayout.h"

#include <QCoreApplication>
#include <QMenu>

namespace {

// The names that the main process sends, for the translators.
[[maybe_unused]] constexpr const char* itemNames[] = {
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "AM"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "FM"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "PM"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "Pulse"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "Digital Ramp"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "Digital"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "Multitone"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "AWGN"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "DSSS"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "OFDM"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "Quick Waveform"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "Playback"),
    QT_TRANSLATE_NOOP("RemoteMiniBarWindow", "Streaming"),
};

// The item's caption: its name in the user's language, or its text when it has no name; on one line, shown as
// it stands.
QString actionText(const ModBusinessEntry& business)
{
    QString text = business.name.isEmpty() ? business.text
                                           : QCoreApplication::translate("RemoteMiniBarWindow",
                                                                         business.name.toUtf8().constData());
    text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text.simplified().replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

ModMenu::ModMenu(QWidget* bar)
    : m_bar(bar)
{}

ModMenu::~ModMenu() = default;

void ModMenu::create()
{
    m_menu = new QMenu(m_bar);
    m_menu->setObjectName(QStringLiteral("miniBarModMenu"));
    // The press that closes the menu does nothing else.
    m_menu->setAttribute(Qt::WA_NoMouseReplay, true);
    m_menu->installEventFilter(this);
    connect(m_menu, &QMenu::aboutToHide, this, [this] { m_justHidden.set(); });
    connect(m_menu, &QMenu::triggered, this,
            [this](const QAction* action) { emit businessChosen(action->data().toString()); });
}

void ModMenu::rebuild(const QVector<ModBusinessEntry>& businesses)
{
    if (!m_menu)
        create();
    m_menu->clear();
    for (const ModBusinessEntry& business : businesses) {
        QAction* action = m_menu->addAction(actionText(business));
        action->setCheckable(true);
        action->setData(business.id);
    }
    if (businesses.isEmpty())
        hide();
    else if (isVisible())
        place();
}

void ModMenu::check(const QString& enabledBusinessId)
{
    if (!m_menu)
        return;
    const QList<QAction*> actions = m_menu->actions();
    for (QAction* action : actions)
        action->setChecked(!enabledBusinessId.isEmpty() && action->data().toString() == enabledBusinessId);
}

bool ModMenu::isEmpty() const
{
    return !m_menu || m_menu->isEmpty();
}

bool ModMenu::isVisible() const
{
    return m_menu && m_menu->isVisible();
}

bool ModMenu::owns(const QObject* object) const
{
    return m_menu && object == m_menu;
}

void ModMenu::open(const QWidget* button, const QRect& bar)
{
    m_anchor = Placement::anchorBelow(QRect(button->mapTo(m_bar, QPoint(0, 0)), button->size()), bar);
    m_barFrame = bar;
    place();
    m_openingClick.hasOpened();
    m_menu->popup(m_menu->pos());
}

void ModMenu::place()
{
    const QSize size = m_menu->sizeHint().expandedTo(m_menu->minimumSizeHint());
    m_menu->setGeometry(Placement::popupRect(m_anchor, size, m_barFrame, currentScreens(m_bar)));
}

void ModMenu::hide()
{
    if (isVisible())
        m_menu->hide();
}

bool ModMenu::eventFilter(QObject* watched, QEvent* event)
{
    return m_openingClick.takes(*event) || QObject::eventFilter(watched, event);
}
