#include "live/ui/WishPanel.h"

#include "widgets/ButtonPainting.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Named.h"
#include "widgets/SkinStyle.h"
#include "widgets/TextTable.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kWishClockLength = 5; // "09:05"
constexpr int kLeastRows = 2;
const QString kArtistFollows = u" – "_s;
enum WishColumn { kWishTitle, kWishGuest, kWishTime };

/** What stands in front is the title; artist and guest are dim. */
class WishDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const Skin& skin = SkinStyle::Colours();
        const bool isSelected = option.state & QStyle::State_Selected;
        painter->fillRect(option.rect, isSelected ? skin.highlight : skin.base);
        const int inset = SkinStyle::Units().Of(0.45);
        QRect place = option.rect.adjusted(inset, 0, -inset, 0);
        const QString text = index.data().toString();
        if (index.column() == kWishTime)
            place.setLeft(place.right() - option.fontMetrics.horizontalAdvance(text));
        const QString shown = option.fontMetrics.elidedText(text, Qt::ElideRight, place.width());
        const QString bright = shown.left(BrightLength(text, index.column()));
        painter->setPen(isSelected ? skin.highlightText : skin.text);
        painter->drawText(place, Qt::AlignVCenter | Qt::TextSingleLine, bright);
        place.adjust(option.fontMetrics.horizontalAdvance(bright), 0, 1, 0);
        painter->setPen(isSelected ? skin.highlightText : skin.dim);
        painter->drawText(place, Qt::AlignVCenter | Qt::TextSingleLine, shown.mid(bright.size()));
    }

private:
    static qsizetype BrightLength(const QString& text, int column) {
        const qsizetype artist = text.lastIndexOf(kArtistFollows);
        return column == kWishGuest ? 0 : column == kWishTitle && artist >= 0 ? artist : text.size();
    }
};

QStringList RowOf(const Wish& wish) {
    const WishNames names = NamesOfWish(ShownWish(wish));
    const QString artist = names.artist.isEmpty() ? QString() : kArtistFollows + names.artist;
    return {names.title + artist, wish.guest, wish.time.right(kWishClockLength)};
}

} // namespace

WishPanel::WishPanel(WishList& wishes, QWidget* parent)
    : QWidget(parent),
      wishes_(wishes),
      heading_(new QLabel(u"Wunschzettel"_s, this)),
      count_(Named(new QLabel(this), u"lblWuensche"_s, u"Anzahl der Wünsche"_s)),
      model_(new TextTableModel({u"Titel"_s, u"Gewünscht von"_s, u"Zeit"_s}, {}, this)),
      table_(Named(new TextTable(*model_, {0, 6.6, 4}, this), u"lstWuensche"_s, u"Wünsche der Gäste"_s)),
      empty_(Named(new ElidedLabel(this), u"lblKeineWuensche"_s, u"Hinweis"_s)) {
    QFont bold; // its size is the program's, whatever that becomes
    bold.setBold(true);
    heading_->setFont(bold);
    count_->setForegroundRole(QPalette::PlaceholderText);
    table_->setToolTip(u"Doppelklick oder Eingabe: an die aktive Wiedergabeliste anhängen"_s);
    table_->horizontalHeader()->hide();
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table_->setItemDelegate(new WishDelegate(table_));
    empty_->SetText(u"Strg+W notiert den gewählten Titel als Wunsch."_s);
    empty_->SetTone(Tone::Dim);
    empty_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    empty_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    auto* head = new QHBoxLayout;
    head->addWidget(heading_);
    head->addStretch();
    head->addWidget(count_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(table_, 1);
    column->addWidget(empty_, 1);
    connect(&wishes_, &WishList::Changed, this, [this] {
        if (isVisible())
            Reload();
    });
    connect(table_, &TextTable::activated, this, [this](const QModelIndex& index) { Tell(index.row()); });
    ApplyLook();
    Reload();
}

QString WishPanel::CountText(qsizetype count) {
    return count == 0 ? u"keine Wünsche"_s : count == 1 ? u"1 Wunsch"_s : u"%1 Wünsche"_s.arg(count);
}

void WishPanel::AddContextAction(QAction& action) {
    table_->addAction(&action);
    table_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

/** The selection stays on its wish while others come and go. */
void WishPanel::Reload() {
    const int selected = table_->currentIndex().row();
    const quint64 wish = shown_.value(selected);
    QList<QStringList> rows;
    shown_.clear();
    for (const Wish& one : wishes_.Wishes()) {
        rows.append(RowOf(one));
        shown_.append(one.id);
    }
    model_->SetRows(rows);
    if (const auto row = shown_.indexOf(wish); selected >= 0 && row >= 0)
        table_->selectRow(static_cast<int>(row));
    count_->setText(CountText(shown_.size()));
    table_->setVisible(!shown_.isEmpty());
    empty_->setVisible(shown_.isEmpty());
}

void WishPanel::Tell(int row) {
    if (const int place = wishes_.RowOf(shown_.value(row)); place >= 0)
        Q_EMIT AddRequested(wishes_.Wishes().at(place));
}

QSize WishPanel::minimumSizeHint() const {
    const FontUnits& units = SkinStyle::Units();
    return {0, units.Of(1.4) + units.Gap(1.5) + kLeastRows * units.TableRow() + 2};
}

void WishPanel::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    layout()->setContentsMargins(focusRingMargin, 0, focusRingMargin, 0);
    layout()->setSpacing(units.Gap(1.5));
}

void WishPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Reload();
}

void WishPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

} // namespace kalvo
