#include "live/ui/ValueChoice.h"

#include "live/AutoDjValues.h"
#include "live/ui/ValueView.h"
#include "widgets/ButtonPainting.h"
#include "widgets/Named.h"
#include "widgets/SkinStyle.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

std::size_t PlaceOf(ArchiveField field) {
    return static_cast<std::size_t>(std::find(CategoryLists::kFields.begin(), CategoryLists::kFields.end(), field) -
                                    CategoryLists::kFields.begin());
}

QString CountText(qsizetype count) {
    return QLocale(QLocale::German).toString(count);
}

} // namespace

ValueChoice::ValueChoice(const DataFolder& folder, QWidget* parent)
    : RingRoom(parent),
      folder_(folder),
      criteria_(new QButtonGroup(this)),
      criterion_(Named(new QLabel(this), u"lblKriterium1"_s, u"Kriterium"_s)),
      offerCount_(Named(new QLabel(this), u"lblWerte"_s, u"Anzahl angebotener Werte"_s)),
      chosenCount_(Named(new QLabel(this), u"lblAuswahl"_s, u"Anzahl gewählter Werte"_s)),
      search_(Named(new QLineEdit(this), u"txtSuche"_s, u"Werte durchsuchen"_s)),
      offer_(Named(new ValueView(this), u"List1"_s, u"Werte des Kriteriums"_s)),
      choice_(Named(new ValueView(this), u"LstAuswahl1"_s, u"Gewählte Werte"_s)) {
    for (const ArchiveField field : CategoryLists::kFields) {
        auto* list = new QStringListModel(this);
        list->setObjectName(u"Lst"_s + CategoryLists::Name(field));
        lists_.at(PlaceOf(field)) = list;
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(focusRingMargin, focusRingMargin, focusRingMargin, focusRingMargin);
    column->setSpacing(SkinStyle::Units().Gap(3));
    column->addLayout(BuildCriteria());
    column->addLayout(BuildLists(), 1);
    connect(search_, &QLineEdit::textChanged, this, &ValueChoice::ShowOffer);
    search_->installEventFilter(this);
    connect(offer_, &ValueView::Chosen, this, &ValueChoice::ChooseSelected);
    connect(choice_, &ValueView::Chosen, this, &ValueChoice::GiveBackSelected);
    connect(offer_, &ValueView::SelectionChanged, this, &ValueChoice::ShowChoices);
    connect(choice_, &ValueView::SelectionChanged, this, &ValueChoice::ShowChoices);
}

QBoxLayout* ValueChoice::BuildCriteria() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(6));
    for (const ArchiveField field : CategoryLists::kFields) {
        const QString name = CategoryLists::Name(field);
        auto* option = Named(new QRadioButton(name, this), u"opt"_s + name + u'1', u"Kriterium: "_s + name);
        criteria_->addButton(option, static_cast<int>(field));
        connect(option, &QRadioButton::clicked, this, [this, field] {
            if (field != field_)
                ShowCriterion(field);
        });
        row->addWidget(option);
    }
    row->addStretch();
    auto* refresh =
        Named(new QPushButton(u"Aktualisieren"_s, this), u"Command7"_s, u"Werte neu aus dem Musikarchiv lesen"_s);
    refresh->setToolTip(refresh->accessibleName());
    refresh->setAutoDefault(false);
    connect(refresh, &QPushButton::clicked, this, &ValueChoice::ListsWanted);
    row->addWidget(refresh);
    return row;
}

QBoxLayout* ValueChoice::BuildLists() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(3));
    row->addLayout(BuildOffer(), 1);
    row->addLayout(BuildMoving());
    row->addLayout(BuildChosen(), 1);
    return row;
}

QBoxLayout* ValueChoice::BuildOffer() {
    auto* head = new QHBoxLayout;
    head->addWidget(criterion_);
    head->addStretch();
    head->addWidget(offerCount_);
    search_->setPlaceholderText(u"Suchen"_s);
    search_->setClearButtonEnabled(true);
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(1.5));
    column->addLayout(head);
    column->addWidget(search_);
    column->addWidget(offer_, 1);
    return column;
}

QBoxLayout* ValueChoice::BuildMoving() {
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(2));
    column->addStretch();
    moving_ = {
        AddMoving(*column, 3, u"›"_s, u"Markierte Werte wählen"_s, &ValueChoice::ChooseSelected),
        AddMoving(*column, 4, u"»"_s, u"Alle gezeigten Werte wählen"_s, &ValueChoice::ChooseShown),
        AddMoving(*column, 5, u"‹"_s, u"Markierte Werte aus der Auswahl nehmen"_s, &ValueChoice::GiveBackSelected),
        AddMoving(*column, 6, u"«"_s, u"Auswahl leeren"_s, &ValueChoice::GiveBackAll)};
    column->addStretch();
    return column;
}

QPushButton* ValueChoice::AddMoving(QBoxLayout& column, int number, const QString& sign, const QString& what,
                                    void (ValueChoice::*act)()) {
    auto* button = Named(new QPushButton(sign, this), u"Command%1"_s.arg(number), what);
    button->setToolTip(what);
    button->setAutoDefault(false);
    button->setFixedWidth(SkinStyle::Units().Of(3));
    connect(button, &QPushButton::clicked, this, act);
    column.addWidget(button);
    return button;
}

QBoxLayout* ValueChoice::BuildChosen() {
    auto* head = new QHBoxLayout;
    head->addWidget(new QLabel(u"Auswahl"_s, this));
    head->addStretch();
    head->addWidget(chosenCount_);
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(1.5));
    column->addLayout(head);
    column->addWidget(choice_, 1);
    return column;
}

void ValueChoice::SetChoice(ArchiveField field, const QStringList& values) {
    chosen_[field] = values;
    ShowCriterion(field);
}

void ValueChoice::FocusSearch() {
    search_->setFocus();
}

void ValueChoice::Reload() {
    isRead_ = {};
    ShowCriterion(field_);
}

void ValueChoice::ShowCriterion(ArchiveField field) {
    field_ = field;
    criteria_->button(static_cast<int>(field))->setChecked(true);
    criterion_->setText(CategoryLists::Name(field));
    const std::size_t place = PlaceOf(field);
    if (!isRead_.at(place)) {
        const std::optional<QStringList> values = AutoDjValues::Read(folder_, field);
        lists_.at(place)->setStringList(values.value_or(QStringList()));
        isRead_.at(place) = values.has_value();
    }
    search_->clear();
    ShowChosen();
    if (!isRead_.at(place))
        Q_EMIT ListsWanted();
}

void ValueChoice::ShowOffer() {
    const QStringList offered =
        AutoDjValues::Offered(lists_.at(PlaceOf(field_))->stringList(), search_->text().trimmed(), Values());
    offer_->SetValues(offered);
    offerCount_->setText(CountText(offered.size()));
}

void ValueChoice::ShowChosen() {
    ShowOffer();
    choice_->SetValues(Values());
    chosenCount_->setText(CountText(Values().size()));
    Q_EMIT Changed();
}

void ValueChoice::ShowChoices() {
    const bool states[] = {!offer_->Selected().isEmpty(), offer_->model()->rowCount() > 0,
                           !choice_->Selected().isEmpty(), choice_->model()->rowCount() > 0};
    for (std::size_t i = 0; i < moving_.size(); ++i) {
        if (moving_.at(i))
            moving_.at(i)->setEnabled(states[i]);
    }
}

void ValueChoice::Choose(const QStringList& values) {
    if (values.isEmpty())
        return;
    chosen_[field_] += values;
    ShowChosen();
}

void ValueChoice::GiveBack(const QStringList& values) {
    if (values.isEmpty())
        return;
    chosen_[field_] = AutoDjValues::Offered(Values(), {}, values);
    ShowChosen();
}

void ValueChoice::ChooseSelected() {
    Choose(offer_->Selected());
}

void ValueChoice::ChooseShown() {
    Choose(offer_->Values());
}

void ValueChoice::GiveBackSelected() {
    GiveBack(choice_->Selected());
}

void ValueChoice::GiveBackAll() {
    GiveBack(Values());
}

/** Enter in the search stays there: what fills the lists is the window's default. */
bool ValueChoice::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return QWidget::eventFilter(watched, event);
    ChooseFound();
    return true;
}

void ValueChoice::ChooseFound() {
    const QStringList selected = offer_->Selected();
    Choose(selected.isEmpty() ? offer_->Values().mid(0, 1) : selected);
    search_->selectAll();
}

} // namespace kalvo
