#pragma once

#include <QAbstractListModel>
#include <QStringList>
#include <QVector>

namespace Controls {

// The items of an EnumTextButton: texts, which of them can be picked, and which is the current one.
class EnumModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit EnumModel(QObject* parent = nullptr);

    // All of them enabled, none current. False if that is how it was already.
    bool setTexts(const QStringList& texts);
    [[nodiscard]] const QStringList& texts() const { return m_texts; }
    [[nodiscard]] bool has(int index) const { return index >= 0 && index < m_texts.size(); }

    // False if the item was so already, or if there is no such item.
    bool setItemEnabled(int index, bool enabled);
    // False also if there is no such item.
    [[nodiscard]] bool isItemEnabled(int index) const { return has(index) && m_enabled.at(index); }

    // -1 for none.
    void setCurrent(int index);
    [[nodiscard]] int current() const { return m_current; }

    // The current item is the checked one.
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    void tellChanged(int row);

    QStringList m_texts;
    QVector<bool> m_enabled;
    int m_current = -1;
};

} // namespace Controls
