#include "app/FirstStepsCommands.h"

#include "app/DemoTitles.h"
#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/FirstStepsPanel.h"
#include "archive/ui/ArchivePanel.h"
#include "playlists/PlaylistIntake.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace kalvo {

namespace {

/** For both lists together; half an hour of music. */
constexpr int kFirstTitles = 10;
const QString kGuideSection = QStringLiteral("Style");
const QString kGuideKey = QStringLiteral("ErsteSchritte"); // "0": closed for good

} // namespace

FirstStepsCommands::FirstStepsCommands(const Parts& parts)
    : QObject(&parts.window), parts_(parts), panel_(new FirstStepsPanel(&parts.archive)), import_(parts.desk.archive) {
    auto* action = new QAction(QStringLiteral("&Erste Schritte"), this);
    action->setObjectName(QStringLiteral("ErsteSchritteZeigen"));
    connect(action, &QAction::triggered, this, &FirstStepsCommands::ShowGuide);
    parts_.actions.helpMenu->insertAction(parts_.actions.helpMenu->actions().value(0), action);
    parts_.archive.SetGuide(*panel_);
    connect(panel_, &FirstStepsPanel::Chosen, this, &FirstStepsCommands::Choose);
    connect(panel_, &FirstStepsPanel::CloseRequested, this, &FirstStepsCommands::CloseForGood);
    connect(&import_, &FirstStepsImport::Progress, this, [this](const QString& text) {
        state_.progress = text;
        Refresh();
    });
    connect(&import_, &FirstStepsImport::Finished, this, [this](const QString& text) {
        parts_.archive.Refresh();
        Refresh();
        if (!text.isEmpty())
            Q_EMIT Told(text);
    });
    for (const int player : {1, 2})
        connect(&parts_.desk.List(player), &Playlist::Changed, this, &FirstStepsCommands::Refresh);
    connect(&parts_.desk.archive, &Archive::CountChanged, this, &FirstStepsCommands::TakeCount);
    connect(&parts_.desk.mixer, &Mixer::TitleStarted, this, &FirstStepsCommands::Hide);
}

FirstStepsCommands::~FirstStepsCommands() {
    if (look_ != nullptr)
        look_->Stop();
}

void FirstStepsCommands::OfferAtStart() {
    const bool isEmpty = parts_.desk.archive.IsOpen() && parts_.desk.archive.Count() == 0 &&
                         parts_.desk.list1.Count() == 0 && parts_.desk.list2.Count() == 0;
    if (isEmpty && parts_.desk.settings.GetSwitch(kGuideSection, kGuideKey, true))
        ShowGuide();
}

void FirstStepsCommands::ShowGuide() {
    parts_.archive.ShowGuide(true);
    LookForMusic();
    Refresh();
}

void FirstStepsCommands::Hide() {
    parts_.archive.ShowGuide(false);
}

void FirstStepsCommands::CloseForGood() {
    parts_.desk.settings.PutSwitch(kGuideSection, kGuideKey, false);
    Hide();
}

void FirstStepsCommands::LookForMusic() {
    state_.folder = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (look_ != nullptr)
        look_->Stop();
    look_ = std::make_shared<BackgroundRun>(*this);
    look_->Begin([this, folder = state_.folder](BackgroundRun& run) {
        const bool hasMusic = HoldsMusic(folder);
        run.Post([this, hasMusic] {
            state_.hasMusic = hasMusic;
            Refresh();
        });
    });
}

/** Titles that came by another way than the guide's are to be seen. */
void FirstStepsCommands::TakeCount() {
    if (state_.archived == 0 && parts_.desk.archive.Count() > 0 && !import_.IsRunning())
        Hide();
    Refresh();
}

void FirstStepsCommands::Refresh() {
    if (!parts_.archive.IsGuideShown())
        return;
    state_.archived = parts_.desk.archive.Count();
    state_.listed = parts_.desk.list1.Count() + parts_.desk.list2.Count();
    state_.isImporting = import_.IsRunning();
    panel_->Show(state_);
}

void FirstStepsCommands::Choose(int step, bool other) {
    switch (static_cast<FirstStepsState::Step>(step)) {
    case FirstStepsState::Step::Music:
        return ChooseMusic(other);
    case FirstStepsState::Step::Lists:
        return other ? Hide() : FillLists();
    case FirstStepsState::Step::Play:
        parts_.actions.play[0]->trigger();
    }
}

void FirstStepsCommands::ChooseMusic(bool other) {
    if (import_.IsRunning())
        return import_.Cancel();
    if (state_.hasMusic && !other)
        return Import(state_.folder);
    if (state_.hasMusic || !other)
        return AskForFolder();
    const QString folder = parts_.desk.folder.Path(QStringLiteral("\\Probiertitel"));
    import_.Start([folder] { return WriteDemoTitles(folder); });
}

void FirstStepsCommands::AskForFolder() {
    const QString folder =
        QFileDialog::getExistingDirectory(&parts_.window, QStringLiteral("Musikordner wählen"),
                                          QDir(state_.folder).exists() ? state_.folder : QDir::homePath());
    if (!folder.isEmpty())
        Import(folder);
}

void FirstStepsCommands::Import(const QString& folder) {
    Q_EMIT FolderChosen(folder);
    import_.Start(folder);
}

void FirstStepsCommands::FillLists() {
    parts_.intake.Distribute(parts_.desk.archive.RowsAt(SpreadRows(parts_.desk.archive.RowCount(), kFirstTitles)));
}

} // namespace kalvo
