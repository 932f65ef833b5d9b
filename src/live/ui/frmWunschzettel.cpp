#include "live/ui/frmWunschzettel.h"

#include "live/WishState.h"
#include "playlists/Playlist.h"
#include "widgets/Named.h"
#include "widgets/ScreenFit.h"
#include "widgets/SkinStyle.h"
#include "widgets/TextTable.h"
#include "widgets/xMessageBox.h"

#include <QItemSelectionModel>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kStateDelay = 100; // ms
constexpr int kClockLength = 5;  // "09:05"

} // namespace

frmWunschzettel::frmWunschzettel(WishList& wishes, const Playlist& first, const Playlist& second, QWidget* parent)
    : QDialog(parent),
      wishes_(wishes),
      first_(first),
      second_(second),
      column_(new QVBoxLayout(this)),
      model_(new TextTableModel({u"Titel"_s, u"Gewünscht von"_s, u"Zeit"_s, u"Stand"_s}, {}, this)),
      table_(Named(new TextTable(*model_, {0, 12, 10.5, 8}, this), u"ListView1"_s, u"Wünsche der Gäste"_s)),
      empty_(Named(new QLabel(this), u"lblLeer"_s, u"Hinweis"_s)) {
    setObjectName(u"frmWunschzettel"_s);
    const FontUnits& units = SkinStyle::Units();
    column_->setContentsMargins(units.Gap(4), units.Gap(3), units.Gap(4), units.Gap(4));
    column_->setSpacing(units.Gap(3));
    column_->addWidget(table_, 1);
    column_->addWidget(empty_, 1);
    empty_->setText(u"Noch keine Wünsche. Einen Titel im Musikarchiv auswählen und Strg+W drücken."_s);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    BuildMenu();
    column_->addLayout(BuildButtons());
    for (const Wish& wish : wishes_.Wishes())
        old_.insert(wish.id);
    states_.setSingleShot(true);
    states_.setInterval(kStateDelay);
    connect(&states_, &QTimer::timeout, this, &frmWunschzettel::ShowStates);
    for (const Playlist* list : {&first_, &second_}) {
        connect(list, &Playlist::Changed, &states_, qOverload<>(&QTimer::start));
        connect(list, &Playlist::CurrentChanged, &states_, qOverload<>(&QTimer::start));
    }
    connect(&wishes_, &WishList::Changed, this, &frmWunschzettel::Reload);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmWunschzettel::ShowChoices);
    connect(table_, &TextTable::activated, this, [this] { Send(0); });
    ResizeOnScreen(*this, {units.Of(58), units.Of(30)});
    Reload();
    table_->setFocus();
}

void frmWunschzettel::AddHead(QWidget* head) {
    column_->insertWidget(0, head);
}

void frmWunschzettel::BuildMenu() {
    auto* bar = new QMenuBar(this);
    layout()->setMenuBar(bar);
    QMenu* wish = bar->addMenu(u"&Wunsch"_s);
    QAction* play = Add(*wish, u"TitelAbspielen"_s, u"Titel &abspielen"_s, &frmWunschzettel::TitelAbspielen);
    play->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return));
    AddSending(*wish, 1);
    AddSending(*wish, 2);
    wish->addSeparator();
    QAction* remove = Add(*wish, u"TitelLoeschen"_s, u"Titel &löschen"_s, &frmWunschzettel::TitelLoeschen);
    remove->setShortcut(QKeySequence::Delete);
    clear_ = Add(*wish, u"AlleTitelLöschen"_s, u"Alle &Titel löschen..."_s, &frmWunschzettel::AlleTitelLoeschen);
    undo_ =
        Add(*wish, u"LoeschenRueckgaengig"_s, u"Löschen &rückgängig machen"_s, &frmWunschzettel::LoeschenRueckgaengig);
    undo_->setShortcut(QKeySequence::Undo);
    wish->addSeparator();
    wish->addAction(u"&Schließen"_s, QKeySequence::Close, this, &QDialog::close);
    forSelection_ += {play, remove};
    table_->setContextMenuPolicy(Qt::ActionsContextMenu);
    table_->addActions(wish->actions());
}

QAction* frmWunschzettel::Add(QMenu& menu, const QString& name, const QString& text, void (frmWunschzettel::*act)()) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, act);
    menu.addAction(action);
    return action;
}

void frmWunschzettel::AddSending(QMenu& menu, int player) {
    auto* action = new QAction(u"Titel zum Player &%1 hinzufügen"_s.arg(player), this);
    action->setObjectName(u"TitelzumPlayer%1hinzufügen"_s.arg(player));
    action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + player)));
    connect(action, &QAction::triggered, this, [this, player] { Send(player); });
    menu.addAction(action);
    forSelection_.append(action);
}

/** The commands needed at every wish, for the mouse. */
QBoxLayout* frmWunschzettel::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    const auto add = [&](const QString& actionName, const QString& name, const QString& text) {
        auto* action = findChild<QAction*>(actionName);
        auto* button = Named(new QPushButton(text, this), name, action->text().remove(u'&'));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
        row->addWidget(button);
    };
    add(u"TitelLoeschen"_s, u"cmdLoeschen"_s, u"Löschen"_s);
    row->addStretch();
    add(u"TitelzumPlayer1hinzufügen"_s, u"cmdListe1"_s, u"Zu Liste 1"_s);
    add(u"TitelzumPlayer2hinzufügen"_s, u"cmdListe2"_s, u"Zu Liste 2"_s);
    add(u"TitelAbspielen"_s, u"cmdAbspielen"_s, u"Abspielen"_s);
    return row;
}

void frmWunschzettel::Reload() {
    const QList<Wish> selected = Selected();
    shown_.clear();
    for (const Wish& wish : wishes_.Wishes())
        shown_.append(wish.id);
    model_->SetRows(Rows());
    QItemSelection selection;
    for (const Wish& wish : selected) {
        if (const int row = wishes_.RowOf(wish.id); row >= 0)
            selection.select(model_->index(row, 0), model_->index(row, model_->columnCount() - 1));
    }
    table_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    table_->setVisible(!shown_.isEmpty());
    empty_->setVisible(shown_.isEmpty());
    setWindowTitle(shown_.isEmpty() ? u"Wunschzettel"_s : u"Wunschzettel (%1)"_s.arg(shown_.size()));
    ShowChoices();
}

QList<QStringList> frmWunschzettel::Rows() const {
    const WishState states(first_, second_);
    QList<QStringList> rows;
    for (const Wish& wish : wishes_.Wishes()) {
        const QString time = old_.contains(wish.id) ? wish.time : wish.time.right(kClockLength);
        rows.append({ShownWish(wish), wish.guest, time, states.Of(wish)});
    }
    return rows;
}

void frmWunschzettel::ShowStates() {
    if (!shown_.isEmpty())
        model_->ChangeRows(0, Rows());
}

void frmWunschzettel::ShowChoices() {
    const bool any = !table_->SelectedRows().isEmpty();
    for (QAction* action : forSelection_)
        action->setEnabled(any);
    undo_->setEnabled(!deleted_.isEmpty());
    clear_->setEnabled(!shown_.isEmpty());
}

/** By their ids: the list may have changed since they were shown. */
QList<Wish> frmWunschzettel::Selected() const {
    QList<Wish> wishes;
    const QList<int> rows = table_->SelectedRows();
    for (const int shown : rows) {
        if (const int row = wishes_.RowOf(shown_.value(shown)); row >= 0)
            wishes.append(wishes_.Wishes().at(row));
    }
    return wishes;
}

void frmWunschzettel::Send(int player) {
    if (const QList<Wish> wishes = Selected(); !wishes.isEmpty())
        Q_EMIT AddRequested(player, wishes);
}

void frmWunschzettel::TitelAbspielen() {
    if (const QList<Wish> wishes = Selected(); !wishes.isEmpty())
        Q_EMIT PlayRequested(wishes.constFirst());
}

void frmWunschzettel::TitelLoeschen() {
    const QList<int> rows = table_->SelectedRows();
    QList<quint64> ids;
    for (const Wish& wish : Selected())
        ids.append(wish.id);
    Keep(wishes_.Remove(ids));
    if (!rows.isEmpty() && !shown_.isEmpty())
        table_->selectRow(std::min(rows.constFirst(), static_cast<int>(shown_.size()) - 1));
}

void frmWunschzettel::AlleTitelLoeschen() {
    const QString answer = xMessageBox::Ask(this, u" Achtung!"_s, u"Wollen Sie wirklich alle Wünsche löschen?"_s,
                                            {u"Ja"_s, u"Nein"_s}, xMessageBox::Sign::Warning);
    if (answer == u"Ja"_s)
        Keep(wishes_.Clear());
}

void frmWunschzettel::LoeschenRueckgaengig() {
    if (!deleted_.isEmpty())
        wishes_.PutBack(deleted_.takeLast());
    ShowChoices();
}

void frmWunschzettel::Keep(const QList<WishList::Removed>& removed) {
    if (!removed.isEmpty())
        deleted_.append(removed);
    ShowChoices();
}

void frmWunschzettel::done(int result) {
    wishes_.Save();
    QDialog::done(result);
}

} // namespace kalvo
