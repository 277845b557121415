#pragma once

#include <QFileIconProvider>

class QFileDialog;

namespace Controls {

// Folders, files and drives in the kit's own icons, whatever the desktop's are.
class FileIcons final : public QFileIconProvider
{
public:
    FileIcons();
    ~FileIcons() override;

    [[nodiscard]] QIcon icon(IconType type) const override;
    [[nodiscard]] QIcon icon(const QFileInfo& file) const override;
};

// Gives the buttons of the toolkit's file dialog the kit's icons.
void setButtonIcons(const QFileDialog& dialog);

} // namespace Controls
