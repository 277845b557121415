#include "controls/FileIcons.h"

#include "controls/ThemedIcon.h"

#include <QFileDialog>
#include <QToolButton>

namespace Controls {
namespace {

struct ButtonIcon
{
    const char* button; // the toolkit's object name
    const char* icon;
};

constexpr ButtonIcon buttonIcons[] = {
    {"backButton", "arrow_left"},
    {"forwardButton", "arrow_right"},
    {"toParentButton", "arrow_up"},
};

QIcon kitIcon(const char* name)
{
    return themedIcon(QStringLiteral(":/Controls/Image/%1.svg").arg(QLatin1String(name)));
}

} // namespace

FileIcons::FileIcons() = default;
FileIcons::~FileIcons() = default;

QIcon FileIcons::icon(IconType type) const
{
    switch (type) {
    case Computer:
    case Desktop:
    case Network:
    case Drive:
        return kitIcon("computer");
    case Folder:
    case Trashcan:
        return kitIcon("folder");
    case File:
        break;
    }
    return kitIcon("file");
}

QIcon FileIcons::icon(const QFileInfo& file) const
{
    return kitIcon(file.isRoot() ? "computer" : file.isDir() ? "folder" : "file");
}

void setButtonIcons(const QFileDialog& dialog)
{
    for (const ButtonIcon& entry : buttonIcons) {
        if (auto* const button = dialog.findChild<QToolButton*>(QLatin1String(entry.button)))
            button->setIcon(kitIcon(entry.icon));
    }
}

} // namespace Controls
