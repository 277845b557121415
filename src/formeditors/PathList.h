#pragma once

#include <QListWidget>
#include <QStringList>

// A list of files whose rows can be put into another order: by dragging, and with Alt+Up and Alt+Down for the
// current row. The path of a row is its data under Qt::UserRole.
class PathList final : public QListWidget
{
    Q_OBJECT

public:
    explicit PathList(QWidget* parent = nullptr);
    ~PathList() override;

    // From top to bottom.
    [[nodiscard]] QStringList paths() const;
    [[nodiscard]] QString currentPath() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    // The user wants this order; a dragged row may stand in its new place already.
    void orderEdited(const QStringList& paths);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void tellOrderLater();

    bool m_orderToTell = false;
};
