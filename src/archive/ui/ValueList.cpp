#include "archive/ui/ValueList.h"

#include "widgets/SkinStyle.h"

#include <QGuiApplication>
#include <QListView>
#include <QScreen>
#include <QStringListModel>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int valueRows = 14;

} // namespace

ValueList::ValueList(QWidget* parent)
    : QFrame(parent, Qt::Popup), list_(new QListView(this)), model_(new QStringListModel(this)) {
    list_->setObjectName(QStringLiteral("lstKopf"));
    list_->setAccessibleName(tr("Werte der Spalte"));
    list_->setModel(model_);
    list_->setUniformItemSizes(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(list_);
    setFocusProxy(list_);
    connect(list_, &QListView::clicked, this, &ValueList::Choose);
    connect(list_, &QListView::activated, this, &ValueList::Choose);
}

void ValueList::Open(const QStringList& entries, const QRect& head) {
    const FontUnits& units = SkinStyle::Units();
    model_->setStringList(entries);
    list_->setCurrentIndex(model_->index(0));
    const int rows = qMin(valueRows, model_->rowCount());
    QRect place(head.left(), head.bottom() + 1, qMax(head.width(), units.Of(12)), rows * units.TableRow() + 2);
    if (const QScreen* screen = QGuiApplication::screenAt(head.center())) {
        const QRect room = screen->availableGeometry();
        if (place.bottom() > room.bottom() && head.top() - room.top() > room.bottom() - head.bottom())
            place.moveBottom(head.top() - 1);
        place =
            QRect(QPoint(qBound(room.left(), place.left(), room.right() - place.width()), place.top()), place.size())
                .intersected(room);
    }
    setGeometry(place);
    show();
    list_->setFocus(Qt::PopupFocusReason);
}

void ValueList::Choose(const QModelIndex& index) {
    if (!isVisible()) // a click may activate too
        return;
    hide();
    Q_EMIT EntryChosen(index.data().toString());
}

} // namespace kalvo
