#pragma once

#include <QAbstractListModel>

#include <vector>

namespace kalvo {

/** `Nr` of the titles that the duplicate window shows; texts are made of those only that somebody asks for. */
class ShownNumbers : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /** 0 is left out. */
    void Show(std::vector<qint64> numbers) {
        beginResetModel();
        numbers_ = std::move(numbers);
        std::erase(numbers_, 0);
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(numbers_.size());
    }
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override {
        if (!index.isValid() || role != Qt::DisplayRole)
            return {};
        return QString::number(numbers_[static_cast<std::size_t>(index.row())]);
    }

private:
    std::vector<qint64> numbers_;
};

} // namespace kalvo
