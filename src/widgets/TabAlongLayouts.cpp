#include "widgets/TabAlongLayouts.h"

#include <QGridLayout>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>
#include <numeric>
#include <vector>

namespace kalvo {

namespace {

void Gather(QWidget& part, QList<QWidget*>& order);

/** In the order of making. */
QWidget* FirstChildOf(const QWidget& part) {
    const QList<QObject*>& children = part.children();
    const auto first =
        std::find_if(children.begin(), children.end(), [](const QObject* child) { return child->isWidgetType(); });
    return first == children.end() ? nullptr : static_cast<QWidget*>(*first);
}

/**
 * Behind those around it that give it the focus. Qt puts such a giver before the first part that it holds, whether that
 * takes the focus or not: both have to be where the taker is, or Tab would leap.
 */
void Append(QWidget& part, QList<QWidget*>& order) {
    for (QWidget* around = part.parentWidget(); around != nullptr && !around->isWindow();
         around = around->parentWidget()) {
        if (around->focusProxy() != &part)
            continue;
        QWidget* first = FirstChildOf(*around);
        if (first->focusPolicy() == Qt::NoFocus)
            order.append(first);
        order.append(around);
    }
    order.append(&part);
}

/** What reaches over several rows beside others comes after them. */
std::pair<int, int> PlaceOf(const QGridLayout& grid, int index) {
    int row = 0;
    int column = 0;
    int rows = 1;
    int columns = 1;
    grid.getItemPosition(index, &row, &column, &rows, &columns);
    return {column > 0 ? row + rows - 1 : row, column};
}

void Gather(QLayout& layout, QList<QWidget*>& order) {
    std::vector<int> items(static_cast<std::size_t>(layout.count()));
    std::iota(items.begin(), items.end(), 0);
    if (const auto* grid = qobject_cast<const QGridLayout*>(&layout))
        std::stable_sort(items.begin(), items.end(),
                         [grid](int one, int other) { return PlaceOf(*grid, one) < PlaceOf(*grid, other); });
    for (const int index : items) {
        QLayoutItem& item = *layout.itemAt(index);
        if (item.widget() != nullptr)
            Gather(*item.widget(), order);
        else if (item.layout() != nullptr)
            Gather(*item.layout(), order);
    }
}

void Gather(QWidget& part, QList<QWidget*>& order) {
    if (part.focusPolicy() != Qt::NoFocus && part.focusProxy() == nullptr)
        Append(part, order);
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&part)) {
        Append(*tabs->tabBar(), order);
        for (int page = 0; page < tabs->count(); ++page)
            Gather(*tabs->widget(page), order);
    } else if (const auto* area = qobject_cast<const QScrollArea*>(&part);
               area != nullptr && area->widget() != nullptr) {
        Gather(*area->widget(), order);
    } else if (part.layout() != nullptr) {
        Gather(*part.layout(), order);
    }
}

/** A part that takes no focus, or gives it on. */
struct SetApart {
    QWidget* part;
    QWidget* taker;
    Qt::FocusPolicy policy;
};

/** Makes all parts alike: such as these could not be moved. */
std::vector<SetApart> MakeAlike(const QList<QWidget*>& order) {
    std::vector<SetApart> others;
    for (QWidget* part : order) {
        if (part->focusProxy() == nullptr && part->focusPolicy() != Qt::NoFocus)
            continue;
        others.push_back({part, part->focusProxy(), part->focusPolicy()});
        part->setFocusProxy(nullptr);
        part->setFocusPolicy(Qt::TabFocus);
    }
    return others;
}

} // namespace

void TabAlongLayouts(QWidget& window) {
    QList<QWidget*> order;
    if (window.layout() != nullptr)
        Gather(*window.layout(), order);
    const std::vector<SetApart> others = MakeAlike(order);
    for (qsizetype next = 1; next < order.size(); ++next)
        QWidget::setTabOrder(order.at(next - 1), order.at(next));
    for (const SetApart& other : others) {
        other.part->setFocusPolicy(other.policy);
        other.part->setFocusProxy(other.taker);
    }
}

} // namespace kalvo
