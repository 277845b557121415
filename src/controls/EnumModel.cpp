#include "controls/EnumModel.h"

namespace Controls {

EnumModel::EnumModel(QObject* parent)
    : QAbstractListModel(parent)
{}

bool EnumModel::setTexts(const QStringList& texts)
{
    setCurrent(-1);
    if (texts == m_texts && !m_enabled.contains(false)) {
        return false;
    }
    beginResetModel();
    m_texts = texts;
    m_enabled = QVector<bool>(texts.size(), true);
    endResetModel();
    return true;
}

bool EnumModel::setItemEnabled(int index, bool enabled)
{
    if (!has(index) || m_enabled.at(index) == enabled) {
        return false;
    }
    m_enabled[index] = enabled;
    tellChanged(index);
    return true;
}

void EnumModel::setCurrent(int index)
{
    const int before = m_current;
    if (index == before) {
        return;
    }
    m_current = index;
    tellChanged(before);
    tellChanged(index);
}

int EnumModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_texts.size();
}

QVariant EnumModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole) {
        return m_texts.value(index.row());
    }
    if (role == Qt::CheckStateRole) {
        return index.row() == m_current ? Qt::Checked : Qt::Unchecked;
    }
    return {};
}

Qt::ItemFlags EnumModel::flags(const QModelIndex& index) const
{
    return isItemEnabled(index.row()) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

void EnumModel::tellChanged(int row)
{
    if (has(row)) {
        emit dataChanged(index(row), index(row));
    }
}

} // namespace Controls
