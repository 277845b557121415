#include "controls/TouchNumKeyboard.h"

#include "controls/BaseUnitAdapter.h"
#include "controls/ElidedLabel.h"
#include "controls/Emphasis.h"
#include "controls/EntryLine.h"
#include "controls/Keypad.h"
#include "controls/KeypadKey.h"
#include "controls/Marks.h"
#include "controls/NumberEntry.h"
#include "controls/Placement.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

namespace Controls {
namespace {

constexpr int margin = 8;
constexpr int gap = 4;
constexpr int cancelSize = 44;
constexpr int cancelFont = 24; // pixels, as the next two
constexpr int titleFont = 15;
constexpr int limitsFont = 13;

constexpr char refusedProperty[] = "refused";

ElidedLabel* createLabel(const QString& name, int fontSize, QFont::Weight weight, QWidget* parent)
{
    auto* const label = new ElidedLabel(parent, 2);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    label->setContentsMargins(gap, 0, gap, 0);
    QFont font = label->font();
    font.setPixelSize(fontSize);
    font.setWeight(weight);
    label->setFont(font);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return label;
}

void tellWhenCut(ElidedLabel* label)
{
    label->setToolTip(label->isCut() ? label->text() : QString());
}

// The part of a window that the anchor's neighbours stand in: its dialog or its window.
QRect surroundings(const QWidget* anchor)
{
    const QWidget* widget = anchor;
    while (!widget->isWindow() && !qobject_cast<const QDialog*>(widget)) {
        widget = widget->parentWidget();
    }
    return {widget->mapToGlobal(QPoint(0, 0)), widget->size()};
}

QRect availableScreen(const QWidget* anchor, const QPoint& center)
{
    const QScreen* const here = QGuiApplication::screenAt(center);
    return (here ? here : anchor->screen())->availableGeometry();
}

QPoint centerOf(const QWidget* widget)
{
    return widget->mapToGlobal(widget->rect().center());
}

// What a physical key does to the entry; nothing for a key without a meaning here.
Keypad::Action actionOf(const QKeyEvent& event)
{
    using Move = NumberEntry::Move;
    const auto move = [](Move where) {
        return [where](NumberEntry& entry) {
            entry.moveCursor(where);
            return std::nullopt;
        };
    };
    const auto edit = [](void (NumberEntry::*change)()) {
        return [change](NumberEntry& entry) {
            (entry.*change)();
            return std::nullopt;
        };
    };
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return [](NumberEntry& entry) { return entry.pressEnter(); };
    case Qt::Key_Up:
        return edit(&NumberEntry::stepUp);
    case Qt::Key_Down:
        return edit(&NumberEntry::stepDown);
    case Qt::Key_Left:
        return move(Move::Left);
    case Qt::Key_Right:
        return move(Move::Right);
    case Qt::Key_Home:
        return move(Move::Home);
    case Qt::Key_End:
        return move(Move::End);
    case Qt::Key_Backspace:
        return edit(&NumberEntry::backspace);
    case Qt::Key_Delete:
        return edit(&NumberEntry::deleteForward);
    default:
        break;
    }
    const auto otherMeaning = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const QString text = event.text();
    if (text.size() != 1 || !text.front().isPrint() || (event.modifiers() & otherMeaning)) {
        return nullptr;
    }
    return [character = text.front()](NumberEntry& entry) { return entry.type(character); };
}

} // namespace

class TouchNumKeyboard::Private
{
public:
    Private(TouchNumKeyboard* keyboard, std::unique_ptr<BaseUnitAdapter> givenAdapter,
            const NumericEntry& numericEntry);

    void build(const QString& titleText);
    void fitInto(const QRect& screen);
    void placeBeside(const QWidget* anchor);
    void act(const Keypad::Action& action);
    void paste(QClipboard::Mode mode);
    void refresh();
    void finish(double value);

    TouchNumKeyboard* const q;
    const std::unique_ptr<BaseUnitAdapter> adapter;
    NumberEntry entry;
    ElidedLabel* title = nullptr;
    EntryLine* line = nullptr;
    ElidedLabel* limits = nullptr;
    Keypad* keypad = nullptr;
    bool committed = false;
    bool closed = false;

private:
    QLayout* buildTitleRow(const QString& text);
};

TouchNumKeyboard::Private::Private(TouchNumKeyboard* keyboard, std::unique_ptr<BaseUnitAdapter> givenAdapter,
                                   const NumericEntry& numericEntry)
    : q(keyboard)
    , adapter(std::move(givenAdapter))
    , entry(*adapter, numericEntry)
{}

void TouchNumKeyboard::Private::build(const QString& titleText)
{
    line = new EntryLine(titleText, q);
    limits = createLabel(QStringLiteral("limitsLabel"), limitsFont, QFont::Normal, q);
    keypad = new Keypad(adapter->units(), entry.stepText(), q);
    keypad->offer(entry.limits().takesFractions(), entry.limits().takesNegatives());

    auto* const layout = new QVBoxLayout(q);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(gap);
    layout->addLayout(buildTitleRow(titleText));
    layout->addWidget(line);
    layout->addWidget(limits);
    layout->addWidget(keypad);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(keypad, &Keypad::pressed, q, [this](const Keypad::Action& action) { act(action); });
    connect(line, &EntryLine::cursorWanted, q, [this](int position) {
        entry.setCursor(position);
        refresh();
    });
    connect(line, &EntryLine::selectAllWanted, q, [this] {
        entry.selectAll();
        refresh();
    });
    connect(line, &EntryLine::selectionPasteWanted, q, [this] { paste(QClipboard::Selection); });
}

QLayout* TouchNumKeyboard::Private::buildTitleRow(const QString& text)
{
    title = createLabel(QStringLiteral("titleLabel"), titleFont, emphasis(), q);
    title->setText(text);

    auto* const cancel = new KeypadKey(QStringLiteral("\u00d7"), cancelFont, q);
    cancel->setObjectName(QStringLiteral("keyCancel"));
    cancel->setAccessibleName(tr("Cancel"));
    cancel->setFixedSize(cancelSize, cancelSize);
    connect(cancel, &KeypadKey::clicked, q, &QDialog::reject);

    auto* const row = new QHBoxLayout;
    row->setSpacing(gap);
    row->addWidget(title, 1);
    row->addWidget(cancel);
    return row;
}

void TouchNumKeyboard::Private::fitInto(const QRect& screen)
{
    const int excess = q->height() - screen.height();
    if (excess > 0) {
        keypad->setLargestHeight(keypad->height() - excess);
        q->layout()->activate();
    }
}

void TouchNumKeyboard::Private::placeBeside(const QWidget* anchor)
{
    const QRect button(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    q->move(Controls::placeBeside(button, surroundings(anchor), q->size(),
                                  availableScreen(anchor, button.center())));
}

void TouchNumKeyboard::Private::act(const Keypad::Action& action)
{
    if (committed || closed) {
        return;
    }
    const NumberEntry::Accepted accepted = action(entry);
    refresh();
    if (accepted) {
        finish(*accepted);
    }
}

void TouchNumKeyboard::Private::paste(QClipboard::Mode mode)
{
    const QString text = QGuiApplication::clipboard()->text(mode);
    act([text](NumberEntry& target) {
        target.paste(text);
        return std::nullopt;
    });
}

void TouchNumKeyboard::Private::refresh()
{
    line->display(entry);
    keypad->setCurrentUnit(entry.unitIndex());

    const bool refused = !entry.refusal().isEmpty();
    const QString text = refused ? entry.refusal() : entry.limits().text();
    if (limits->property(refusedProperty).toBool() != refused) {
        limits->setProperty(refusedProperty, refused);
        limits->style()->unpolish(limits);
        limits->style()->polish(limits);
    }
    if (limits->text() != text) {
        limits->setText(text);
        tellWhenCut(limits);
        line->setAccessibleDescription(text);
    }
    if (refused) {
        QAccessibleEvent alert(limits, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void TouchNumKeyboard::Private::finish(double value)
{
    committed = true;
    const QPointer<TouchNumKeyboard> keyboard(q);
    adapter->commit(value);
    // Whoever took the value may have closed or deleted the keyboard.
    if (keyboard) {
        keyboard->accept();
    }
}

TouchNumKeyboard::TouchNumKeyboard(std::unique_ptr<BaseUnitAdapter> adapter, const NumericEntry& entry,
                                   QWidget* anchor)
    : QDialog(anchor ? anchor->window() : nullptr,
              Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , d(std::make_unique<Private>(this, std::move(adapter), entry))
{
    setObjectName(QStringLiteral("touchNumKeyboard"));
    setWindowTitle(entry.title);
    d->adapter->setCurrentValue(entry.value);
    d->build(entry.title);
    d->refresh();
    ensurePolished();
    layout()->activate();
    d->fitInto(availableScreen(anchor ? anchor : this, anchor ? centerOf(anchor) : pos()));
    // The size is fixed from here on.
    tellWhenCut(d->title);
    tellWhenCut(d->limits);
    if (anchor) {
        d->placeBeside(anchor);
    }
}

TouchNumKeyboard::~TouchNumKeyboard() = default;

QObject* TouchNumKeyboard::receiver() const
{
    return d->adapter.get();
}

void TouchNumKeyboard::done(int result)
{
    if (!std::exchange(d->closed, true)) {
        QDialog::done(result);
    }
}

void TouchNumKeyboard::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        reject();
    } else if (event->matches(QKeySequence::Paste)) {
        d->paste(QClipboard::Clipboard);
    } else if (event->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(d->entry.quantityText());
    } else if (event->matches(QKeySequence::SelectAll)) {
        d->entry.selectAll();
        d->refresh();
    } else if (const Keypad::Action action = actionOf(*event)) {
        // A held Enter key, perhaps still held from opening the keyboard, accepts nothing.
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!(enter && event->isAutoRepeat())) {
            d->act(action);
        }
    } else {
        event->ignore();
    }
}

void TouchNumKeyboard::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous()) {
        d->closed = false; // whatever happened before it was opened, it can be closed
        d->line->setFocus();
    }
}

void TouchNumKeyboard::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    if (!testAttribute(Qt::WA_StyleSheetTarget)) {
        QPainter painter(this);
        paintFrame(painter, rect(), palette().color(QPalette::Mid));
    }
}

} // namespace Controls
