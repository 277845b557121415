#pragma once

#include <QTableWidget>
#include <QVector>

// A tone that can be switched on or off.
struct Tone
{
    double frequency = 0; // Hz
    bool enabled = false;
    int latticeIndex = 0;
};

// The table of a multitone item's candidate tones, by frequency. A click into the third column of a row asks
// for another selection; the marks show what was last given to showTones().
class ToneTable final : public QTableWidget
{
    Q_OBJECT

public:
    explicit ToneTable(QWidget* parent = nullptr);
    ~ToneTable() override;

    // In any order. Touches only what differs from what is shown; emits nothing.
    void showTones(QVector<Tone> tones);

    // Some rows high.
    [[nodiscard]] QSize sizeHint() const override;

signals:
    // The user wants the tones with these lattice indices, and no others, to be on; from top to bottom.
    void enabledTonesEdited(const QVector<int>& latticeIndices);

protected:
    [[nodiscard]] int sizeHintForColumn(int column) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showRow(int row);
    void flip(int row, int column);
    void onItemChanged(const QTableWidgetItem* changed);

    QVector<Tone> m_tones; // as they are confirmed, by row
    bool m_populating = false;
};
