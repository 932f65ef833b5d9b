#include "app/WishCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/ListBand.h"
#include "archive/ui/ArchivePanel.h"
#include "live/ArchiveTitles.h"
#include "live/ui/frmWunschzettel.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistIntake.h"
#include "playlists/ui/PlaylistPanel.h"
#include "widgets/MainButton.h"

#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kGuestLength = 60;

/** The guest's name; no value when the question was cancelled. */
std::optional<QString> AskGuest(QWidget& window) {
    QInputDialog box(&window);
    box.setObjectName(u"frmWunschkandidat"_s);
    box.setWindowTitle(u"Wunschzettel"_s);
    box.setLabelText(u"Geben Sie bitte den Namen des Wunschkandidaten ein:"_s);
    box.setOkButtonText(u"OK"_s);
    box.setCancelButtonText(u"Abbrechen"_s);
    // The question stands as it is, without a letter for its field, which has the focus.
    if (auto* question = box.findChild<QLabel*>())
        question->setBuddy(nullptr);
    if (auto* guest = box.findChild<QLineEdit*>())
        guest->setAccessibleName(box.labelText());
    for (QPushButton* button : box.findChildren<QPushButton*>())
        button->setIcon({});
    MakeMain(*box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
    return box.exec() == QDialog::Accepted ? std::optional(box.textValue().trimmed().left(kGuestLength)) : std::nullopt;
}

} // namespace

WishCommands::WishCommands(const Parts& parts) : QObject(&parts.window), parts_(parts) {
    QAction* note = Add(u"TitelZumWunschzettelHinzufuegen"_s, u"Titel zum &Wunschzettel hinzufügen..."_s,
                        QKeySequence(Qt::CTRL | Qt::Key_W), &WishCommands::TitelZumWunschzettelHinzufuegen);
    parts_.actions.archiveMenu->addSeparator();
    parts_.actions.archiveMenu->addAction(note);
    parts_.archive.AddContextActions({note});
    parts_.actions.toolsMenu->addAction(Add(u"Wunschzettel"_s, u"&Wunschzettel..."_s,
                                            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W),
                                            &WishCommands::Wunschzettel));
    WishList& wishes = parts_.desk.wishes;
    connect(&wishes, &WishList::WriteFailed, this, &WishCommands::Told);
    connect(&wishes, &WishList::Added, this, [this](const Wish& wish) {
        const QString guest = wish.guest.isEmpty() ? QString() : u", gewünscht von "_s + wish.guest;
        Q_EMIT Told(u"Neuer Wunsch: "_s + ShownWish(wish) + guest);
    });
    for (const int player : {1, 2})
        connect(&parts_.desk.List(player), &Playlist::CurrentChanged, this, [this, player] { ShowGuest(player); });
    wishes.Load();
}

QAction* WishCommands::Add(const QString& name, const QString& text, const QKeySequence& shortcut,
                           void (WishCommands::*act)()) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, act);
    return action;
}

void WishCommands::TitelZumWunschzettelHinzufuegen() {
    const TitleRecord title = parts_.archive.CurrentRecord();
    if (title.Pfad.isEmpty())
        return parts_.lists.Questions().Tell(u"Wählen Sie bitte zuerst einen Titel im Musikarchiv aus."_s);
    if (const std::optional<QString> guest = AskGuest(parts_.window))
        parts_.desk.wishes.Add({title.Pfad, WishDisplay(title.Interpret, title.Titel), *guest, {}});
}

void WishCommands::Wunschzettel() {
    if (!window_) {
        window_ = new frmWunschzettel(parts_.desk.wishes, parts_.desk.list1, parts_.desk.list2, &parts_.window);
        window_->setAttribute(Qt::WA_DeleteOnClose);
        connect(window_, &frmWunschzettel::AddRequested, this, &WishCommands::Send);
        connect(window_, &frmWunschzettel::PlayRequested, this, &WishCommands::Play);
        Q_EMIT WindowMade(*window_);
    }
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void WishCommands::Send(int player, const QList<Wish>& wishes) {
    const ArchiveTitles archive(parts_.desk.archive);
    QList<TitleRecord> titles;
    for (const Wish& wish : wishes) {
        titles.append(archive.TitleOf(wish));
        guests_.insert(titles.constLast().Pfad, wish.guest);
    }
    const int list = player == 0 ? parts_.lists.ActiveList() : player;
    parts_.intake.AddTitles(list, titles, -1, EntryOrigin::Wish);
}

void WishCommands::Play(const Wish& wish) {
    Mixer& mixer = parts_.desk.mixer;
    const TitleRecord title = ArchiveTitles(parts_.desk.archive).TitleOf(wish);
    const int onAir = mixer.OnAirPlayer();
    const int player = onAir != 0 ? 3 - onAir : mixer.Fader() > 0 ? 2 : 1;
    Playlist& list = parts_.desk.List(player);
    const int row = list.CurrentRow() + 1;
    PlaylistEntry entry = EntryOf(title);
    entry.origin = EntryOrigin::Wish;
    guests_.insert(entry.path, wish.guest);
    parts_.lists.AddEntries(player, {entry}, row);
    const quint64 id = list.At(row).id;
    mixer.PlayRow(player, row);
    const bool isStarted = mixer.Title(player).path == entry.path && mixer.State().Deck(player).playing;
    if (!isStarted && !mixer.IsOpening(player))
        RemoveEntry(player, id);
    else if (onAir != 0)
        mixer.FadeTo(player, -1);
}

/** Its file is not there, or cannot be played, which has been told. */
void WishCommands::RemoveEntry(int player, quint64 id) {
    const QList<PlaylistEntry>& entries = parts_.desk.List(player).Entries();
    const auto found =
        std::find_if(entries.begin(), entries.end(), [id](const PlaylistEntry& entry) { return entry.id == id; });
    if (found != entries.end())
        parts_.lists.RemoveRows(player, {static_cast<int>(found - entries.begin())});
}

void WishCommands::ShowGuest(int player) {
    const Playlist& list = parts_.desk.List(player);
    const int row = list.CurrentRow();
    const bool isWish = row >= 0 && list.At(row).origin == EntryOrigin::Wish;
    parts_.band.Panel(player).SetWishedBy(isWish ? guests_.value(list.At(row).path) : QString());
}

} // namespace kalvo
