#include "controls/OpenPath.h"

#include "controls/ElidedLabel.h"
#include "controls/FileIcons.h"
#include "controls/ThemeManager.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLayout>
#include <QListView>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QToolTip>

namespace Controls {
namespace {

constexpr QSize usualSize(760, 480);
constexpr int border = 1; // pixels, as the next four
constexpr int inset = 8;
constexpr int titleHeight = 36;
constexpr int placesWidth = 150;
constexpr int iconSide = 20;

// The toolkit's dialog keeps its history in the user's settings of the toolkit. While this object lives they
// lie where nothing can be: below a file.
class NowhereToWrite final
{
public:
    NowhereToWrite()
        : m_folder(QFileInfo(toolkitFile()).path())
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QCoreApplication::applicationFilePath() + QStringLiteral("/nowhere"));
    }
    ~NowhereToWrite() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder); }
    Q_DISABLE_COPY(NowhereToWrite)

private:
    static QString toolkitFile()
    {
        return QSettings(QSettings::UserScope, QStringLiteral("QtProject")).fileName();
    }

    QString m_folder;
};

// A list gives its rows the width that they ask for, and cuts what does not fit; rows that ask for none get
// the list's own and shorten their texts.
class NarrowRows final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
};

class FileChooser final : public QFileDialog
{
    Q_DECLARE_TR_FUNCTIONS(FileChooser)

public:
    FileChooser(QWidget* parent, const QString& caption, const QString& folder, const QString& filter)
        : QFileDialog(parent, caption, folder, filter)
    {
        setObjectName(QStringLiteral("fileChooser"));
        setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        setAttribute(Qt::WA_QuitOnClose, false);
        setAcceptMode(AcceptOpen);
        setIconProvider(&m_icons);
        setSizeGripEnabled(false);
        m_title->setObjectName(QStringLiteral("chooserTitle"));
        m_title->setText(caption);
        m_title->setContentsMargins(inset, 0, inset, 0);
        if (parent)
            parent->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == parent() && event->type() == QEvent::Hide && !event->spontaneous())
            reject();
        if (m_places && watched == m_places->viewport() && event->type() == QEvent::ToolTip) {
            auto* const help = static_cast<QHelpEvent*>(event);
            QToolTip::showText(help->globalPos(), m_places->indexAt(help->pos()).data().toString(), m_places);
            return true;
        }
        return QFileDialog::eventFilter(watched, event);
    }

    // The toolkit's words for them differ from ours in some languages. To be called for a choice of files.
    void nameFields()
    {
        setLabelText(FileName, tr("File name:"));
        setLabelText(FileType, tr("Files of type:"));
    }

    // In the middle of the screen that the parent is on. Its parts must be there.
    void place()
    {
        const QScreen* const screen =
            parentWidget() ? parentWidget()->screen() : QGuiApplication::primaryScreen();
        const QRect room = screen->availableGeometry().adjusted(inset, inset, -inset, -inset);
        tellCutNames();
        setUpButtons();
        setUpLists();
        setGaps();
        auto* const parts = findChild<QSplitter*>();
        parts->setHandleWidth(inset);
        parts->setSizes({placesWidth, usualSize.width() - placesWidth});
        resize(usualSize.expandedTo(minimumSizeHint()).boundedTo(room.size()));
        move(room.center() - rect().center());
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QFileDialog::resizeEvent(event);
        m_title->setGeometry(border, border, width() - 2 * border, titleHeight);
    }

    void paintEvent(QPaintEvent*) override
    {
        const ThemeManager& theme = ThemeManager::instance();
        QPainter painter(this);
        painter.fillRect(rect(), theme.color(ThemeManager::Border));
        painter.fillRect(rect().adjusted(border, border, -border, -border),
                         theme.color(ThemeManager::Surface));
        painter.fillRect(m_title->geometry(), theme.color(ThemeManager::Raised));
    }

private:
    // A path is often longer than its room.
    void tellCutNames()
    {
        if (auto* const folder = findChild<QComboBox*>(QStringLiteral("lookInCombo"))) {
            const auto tell = [folder] { folder->setToolTip(folder->currentText()); };
            connect(folder, &QComboBox::currentTextChanged, folder, tell);
            tell();
        }
        // And so may the name of a place be.
        m_places = findChild<QListView*>(QStringLiteral("sidebar"));
        m_places->viewport()->installEventFilter(this);
    }

    // Squares as high as the field beside them.
    void setUpButtons()
    {
        setButtonIcons(*this);
        auto* const field = findChild<QComboBox*>(QStringLiteral("lookInCombo"));
        field->setIconSize({iconSide, iconSide});
        field->ensurePolished();
        const int side = field->sizeHint().height();
        const auto buttons = findChildren<QToolButton*>();
        for (QToolButton* button : buttons) {
            button->setIconSize({iconSide, iconSide});
            button->setFixedSize(side, side);
        }
        // Nothing is made here, and there is one view of the files.
        for (const char* name : {"newFolderButton", "listModeButton", "detailModeButton"})
            findChild<QToolButton*>(QLatin1String(name))->hide();
    }

    void setUpLists()
    {
        setViewMode(List); // names are what counts, and they need room
        auto* const files = findChild<QListView*>(QStringLiteral("listView"));
        files->setWrapping(false); // one below the other, however many
        files->setIconSize({iconSide, iconSide});
        m_places->setIconSize({iconSide, iconSide});
        m_places->setItemDelegate(new NarrowRows(m_places));
        m_places->setTextElideMode(Qt::ElideMiddle);
        m_places->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

    // The same between all controls, so that the two fields stand beside the two buttons.
    void setGaps()
    {
        auto* const grid = static_cast<QGridLayout*>(layout());
        grid->setContentsMargins(inset, titleHeight + inset, inset, inset);
        grid->setSpacing(inset);
        for (int i = 0; i < grid->count(); ++i) {
            if (QLayout* const row = grid->itemAt(i)->layout())
                row->setSpacing(inset);
        }
        auto* const buttons = findChild<QDialogButtonBox*>();
        buttons->ensurePolished(); // which arranges them anew
        buttons->layout()->setSpacing(inset);
    }

    FileIcons m_icons;
    QListView* m_places = nullptr;
    ElidedLabel* m_title = new ElidedLabel(this);
};

} // namespace

QString getOpenPath(const QString& folder, bool directory, const QString& caption, const QString& filter,
                    QWidget* parent, QFileDialog::Options options)
{
    const NowhereToWrite nowhereToWrite;
    const QPointer<FileChooser> chooser = new FileChooser(parent, caption, folder, filter);
    chooser->setOptions(options | QFileDialog::DontUseNativeDialog | QFileDialog::ReadOnly);
    chooser->setFileMode(directory ? QFileDialog::Directory : QFileDialog::ExistingFile);
    if (!directory)
        chooser->nameFields();
    chooser->place();
    const bool chosen = chooser->exec() == QDialog::Accepted;
    if (!chooser)
        return {};
    const QStringList paths = chosen ? chooser->selectedFiles() : QStringList();
    delete chooser;
    return paths.value(0);
}

} // namespace Controls
