// Assembling the main window: its bands, and who is joined with whom.

#include "app/Form1.h"

#include "app/ArchiveCommands.h"
#include "app/AutoDjCommands.h"
#include "app/ChartsCommands.h"
#include "app/ConsolePanel.h"
#include "app/DeckPictures.h"
#include "app/Desk.h"
#include "app/DesktopLink.h"
#include "app/EqualizerCommand.h"
#include "app/FirstStepsCommands.h"
#include "app/GuestCommands.h"
#include "app/HandbookCommands.h"
#include "app/HeadphoneCommands.h"
#include "app/JingleCommands.h"
#include "app/KeyCommands.h"
#include "app/ListBand.h"
#include "app/ListCommands.h"
#include "app/ListenCommands.h"
#include "app/MeasureCommands.h"
#include "app/MetaOutput.h"
#include "app/NoticeBar.h"
#include "app/OptionCommands.h"
#include "app/PreshowCommands.h"
#include "app/RecordingCommands.h"
#include "app/RehearsalCommands.h"
#include "app/SamplerCommands.h"
#include "app/SideCommands.h"
#include "app/StatusLine.h"
#include "app/TagCommands.h"
#include "app/UndoCommands.h"
#include "app/WatchCommands.h"
#include "app/WishCommands.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/frmTitelEinlesen.h"
#include "playback/ui/MixerPanel.h"
#include "widgets/KeySplitter.h"

#include <QCoreApplication>
#include <QMenuBar>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int kHandOverInterval = 100; // ms
constexpr int kOneSecond = 1000;       // ms

} // namespace

void Form1::Build() {
    actions_.BuildMenus(*menuBar());
    BuildBands();
    BuildCommands();
    BuildLiveTools();
    BuildHelpers();
    ConnectMixer();
    ConnectMixing();
    ConnectArchive();
    ConnectActions();
    ConnectSettings();
}

void Form1::BuildBands() {
    auto* central = new QWidget(this);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins({});
    notice_ = new NoticeBar(central);
    column->addWidget(notice_);
    bands_ = new KeySplitter(Qt::Vertical, central);
    bands_->setObjectName(QStringLiteral("Teiler"));
    bands_->setChildrenCollapsible(false);
    console_ = new ConsolePanel(desk_.mixer, bands_);
    lists_ = new ListBand(desk_, listActions_, actions_, bands_);
    archive_ = new ArchivePanel(desk_.archive, desk_.settings, desk_.folder, bands_);
    bands_->addWidget(console_);
    bands_->addWidget(lists_);
    bands_->addWidget(archive_);
    bands_->NameHandle(1, QStringLiteral("TeilerPlayer"), tr("Teiler zwischen Playern und Wiedergabelisten"));
    bands_->NameHandle(2, QStringLiteral("TeilerListen"), tr("Teiler zwischen Wiedergabelisten und Musikarchiv"));
    bands_->setStretchFactor(0, 0);
    bands_->setStretchFactor(1, 2);
    bands_->setStretchFactor(2, 3);
    connect(bands_, &QSplitter::splitterMoved, this, [this] { values_.consoleHeight = bands_->sizes().constFirst(); });
    column->addWidget(bands_, 1);
    setCentralWidget(central);
    status_ = new StatusLine(this);
    setStatusBar(status_);
    console_->SetSelection([this](int player) { return lists_->SelectedRow(player); });
    console_->SetCaption([this](int player) { return lists_->Caption(player); });
    archive_->AddContextActions({actions_.addToPlayer[0], actions_.addToPlayer[1], actions_.distribute,
                                 actions_.selectAllTitles, actions_.importTitles});
}

void Form1::BuildCommands() {
    equalizer_ = new EqualizerCommand(desk_, *actions_.mixerMenu, *this);
    options_ = new OptionCommands(desk_, *actions_.settingsMenu, *archive_, *console_, *this);
    connect(options_, &OptionCommands::LookChosen, this, &Form1::ShowStyle);
    connect(options_, &OptionCommands::OutputChosen, this, &Form1::ChooseDevice);
    connect(options_, &OptionCommands::Warned, status_, &StatusLine::Warn);
    connect(options_, &OptionCommands::Confirmed, this, [this] { meta_->Refresh(); });
    archiveCommands_ = new ArchiveCommands(desk_.archive, *archive_, actions_, values_, {lists_}, *this);
    connect(archiveCommands_, &ArchiveCommands::Told, status_, &StatusLine::Tell);
    tags_ = new TagCommands(desk_, actions_, listActions_, *archive_, *lists_, *this);
    connect(tags_, &TagCommands::Warned, status_, &StatusLine::Warn);
    watch_ = new WatchCommands(desk_, actions_, this);
    undo_ = new UndoCommands(*actions_.editMenu, this);
    undo_->Add(archiveCommands_->UndoStack());
    listCommands_ = new ListCommands({desk_, listActions_, intake_, actions_, *lists_, *undo_, *archive_, *this});
    new DeckPictures(desk_, *console_, *actions_.settingsMenu, this);
    new RecordingCommands(desk_, *actions_.toolsMenu, *status_, *this);
    measures_ = new MeasureCommands(desk_, actions_, *archive_, *options_, *this);
    new ChartsCommands({desk_, listActions_, intake_, actions_, *archive_, *this});
    auto* listen = new ListenCommands({desk_, actions_, listActions_, *archive_, *lists_, *this});
    connect(listen, &ListenCommands::Told, status_, &StatusLine::Tell);
    auto* headphones = new HeadphoneCommands({desk_, actions_, listActions_, *archive_, *lists_, *this});
    connect(headphones, &HeadphoneCommands::Told, status_, &StatusLine::Tell);
    connect(console_, &ConsolePanel::HeadphonesRequested, headphones, &HeadphoneCommands::ListenToList);
    new RehearsalCommands(desk_, actions_, *measures_, *options_, *this);
}

void Form1::BuildLiveTools() {
    auto* wishes = new WishCommands({desk_, listActions_, intake_, actions_, *archive_, *lists_, *this});
    connect(wishes, &WishCommands::Told, status_, &StatusLine::Tell);
    auto* guests = new GuestCommands(desk_, this);
    connect(guests, &GuestCommands::Told, status_, &StatusLine::Tell);
    connect(wishes, &WishCommands::WindowMade, guests, &GuestCommands::AddPanel);
    auto* autoDj = new AutoDjCommands({desk_, listActions_, actions_, *archive_, *status_, *this});
    connect(autoDj, &AutoDjCommands::Told, status_, &StatusLine::Warn);
    auto* jingles = new JingleCommands(desk_, actions_, *this);
    connect(jingles, &JingleCommands::Warned, status_, &StatusLine::Warn);
    new SideCommands({desk_, actions_, *archive_, *wishes, *jingles, *this});
    new SamplerCommands(desk_, actions_, *this);
    new PreshowCommands({desk_, actions_, *lists_, *options_, *measures_, *autoDj, *this});
}

void Form1::BuildHelpers() {
    firstSteps_ = new FirstStepsCommands({desk_, actions_, intake_, *archive_, *this});
    connect(firstSteps_, &FirstStepsCommands::Told, status_, &StatusLine::Tell);
    connect(firstSteps_, &FirstStepsCommands::FolderChosen, this,
            [this](const QString& folder) { values_.importFolder = folder; });
    auto* desktop = new DesktopLink({desk_, *console_, *status_, *options_}, this);
    connect(desktop, &DesktopLink::RaiseWanted, this, &Form1::ComeForward);
    connect(desktop, &DesktopLink::QuitWanted, this, &Form1::close);
    connect(desktop, &DesktopLink::FilesGiven, this, &Form1::AddFiles);
    auto* handbook = new HandbookCommands(actions_, *this, Handbook(QCoreApplication::applicationDirPath()));
    connect(handbook, &HandbookCommands::Told, status_, &StatusLine::Tell);
    for (const auto& [icon, action] : std::initializer_list<std::pair<const char*, const char*>>{
             {"tag", "TagEditor"}, {"wish", "Wunschzettel"}, {"automatic", "AutoDj"}, {"sampler", "Sampler"}})
        archive_->AddTool(QLatin1String(icon), *findChild<QAction*>(QLatin1String(action)));
    new KeyCommands({actions_, *archive_, *this}); // the last: it goes through all menus and controls
}

void Form1::ConnectMixer() {
    Mixer* mixer = &desk_.mixer;
    connect(mixer, &Mixer::OptionsChanged, this, &Form1::ShowOptions);
    connect(mixer, &Mixer::Message, status_, &StatusLine::Tell);
    connect(mixer, &Mixer::OutputChanged, notice_,
            [this](const OutputNews& news) { news.IsTrouble() ? notice_->Show(news.text) : notice_->hide(); });
    connect(&desk_.counter, &PlayCounter::Told, status_, &StatusLine::Tell);
    const auto tellMissing = [this](const QString& path) {
        questions_.Tell(QStringLiteral("Datei:\n%1\nist nicht mehr vorhanden!").arg(path));
    };
    connect(mixer, &Mixer::FileMissing, this, tellMissing, Qt::QueuedConnection); // the music does not wait for an OK
}

template<typename Change>
void Form1::ChangeOptions(Change change) {
    MixerOptions options = desk_.mixer.Options();
    change(options);
    desk_.mixer.SetOptions(options);
}

void Form1::ConnectMixing() {
    MixerPanel* mixing = &console_->Mixing();
    const auto chooseMode = [this](const QString& text) {
        ChangeOptions([&text](MixerOptions& options) { options.mode = FadeModeFromText(text); });
        desk_.settings.PutSetting(QStringLiteral("Mixer"), QStringLiteral("Überblendmodus"), text);
    };
    const auto chooseSpeed = [this](int interval) {
        ChangeOptions([interval](MixerOptions& options) { options.fadeInterval = interval; });
    };
    const auto switchContinuous = [this](bool on) {
        ChangeOptions([on](MixerOptions& options) { options.continuous = on; });
    };
    const auto switchAutomatic = [this](bool on) {
        ChangeOptions([on](MixerOptions& options) { options.automatic = on; });
    };
    connect(mixing, &MixerPanel::ModeChosen, this, chooseMode);
    connect(mixing, &MixerPanel::SpeedChosen, this, chooseSpeed);
    connect(mixing, &MixerPanel::ContinuousToggled, this, switchContinuous);
    connect(mixing, &MixerPanel::AutomaticToggled, this, switchAutomatic);
    connect(mixing, &MixerPanel::VolumeChanged, &desk_.mixer, &Mixer::SetMasterVolume);
    connect(mixing, &MixerPanel::FadeMenuRequested, this,
            [this](const QPoint& place) { actions_.SpeedMenu()->popup(place); });
    connect(actions_.modes, &QActionGroup::triggered, this,
            [chooseMode](const QAction* action) { chooseMode(action->data().toString()); });
    connect(actions_.speeds, &QActionGroup::triggered, this,
            [chooseSpeed](const QAction* action) { chooseSpeed(action->data().toInt()); });
    connect(actions_.continuous, &QAction::triggered, this, switchContinuous);
    connect(actions_.automatic, &QAction::triggered, this, switchAutomatic);
    connect(actions_.removePlayed, &QAction::triggered, this,
            [this](bool on) { ChangeOptions([on](MixerOptions& options) { options.removePlayed = on; }); });
}

void Form1::ConnectArchive() {
    connect(watch_, &WatchCommands::Message, status_, &StatusLine::Tell);
    connect(watch_, &WatchCommands::ImportRequested, this, [this](const QStringList& files) {
        ImportTitles();
        import_->Offer(files);
    });
    connect(archive_, &ArchivePanel::ImportRequested, this, &Form1::ImportTitles);
    connect(archive_, &ArchivePanel::TitleActivated, this,
            [this](const TitleRecord& title) { intake_.AddTitles(listActions_.ActiveList(), {title}); });
    connect(archive_, &ArchivePanel::AddToListRequested, this,
            [this](int player, const QList<TitleRecord>& titles) { intake_.AddTitles(player, titles); });
}

void Form1::ConnectActions() {
    for (const int player : {1, 2}) {
        const auto index = static_cast<std::size_t>(player - 1);
        const auto on = [this](QAction* action, auto run) { connect(action, &QAction::triggered, this, run); };
        on(actions_.play.at(index), [this, player] { console_->Play(player); });
        on(actions_.stop.at(index), [this, player] { desk_.mixer.Stop(player); });
        on(actions_.pause.at(index), [this, player] { desk_.mixer.Pause(player); });
        on(actions_.next.at(index), [this, player] { desk_.mixer.Next(player); });
        on(actions_.mute.at(index), [this, player] { desk_.mixer.ToggleMute(player); });
        on(actions_.fadeTo.at(index), [this, player] { console_->FadeTo(player); });
        on(actions_.addToPlayer.at(index), [this, player] { AddSelectedTitles(player); });
    }
    connect(actions_.distribute, &QAction::triggered, this,
            [this] { intake_.Distribute(archive_->SelectedRecords()); });
    connect(actions_.selectAllTitles, &QAction::triggered, archive_, &ArchivePanel::MAAlleTitelAuswaehlen);
    connect(actions_.focusSearch, &QAction::triggered, this, &Form1::FocusSearch);
    connect(actions_.importTitles, &QAction::triggered, this, &Form1::ImportTitles);
    connect(actions_.addFiles, &QAction::triggered, this, &Form1::AskForFiles);
    connect(actions_.quit, &QAction::triggered, this, &Form1::close);
    connect(actions_.about, &QAction::triggered, this, &Form1::ShowAbout);
}

void Form1::ConnectSettings() {
    const auto keep = [this](QActionGroup* group, const QString& key) {
        connect(group, &QActionGroup::triggered, this, [this, key](const QAction* action) {
            desk_.settings.PutSetting(QStringLiteral("Style"), key, action->data().toString());
            ApplyStyle();
        });
    };
    keep(actions_.skins, QStringLiteral("Skin"));
    keep(actions_.fontSizes, QStringLiteral("Schriftgrad"));
    keep(actions_.buttonSizes, QStringLiteral("Buttongroesse"));
    connect(actions_.DeviceMenu(), &QMenu::aboutToShow, this, &Form1::FillDeviceMenu);
}

void Form1::StartTimers() {
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(kHandOverInterval);
    connect(timer1_, &QTimer::timeout, &desk_.mixer, &Mixer::CheckHandOver);
    timeDj_->setObjectName(QStringLiteral("TimeDJ"));
    timeDj_->setTimerType(Qt::PreciseTimer);
    connect(timeDj_, &QTimer::timeout, &desk_.mixer, &Mixer::StepFade);
    seconds_->setInterval(kOneSecond);
    connect(seconds_, &QTimer::timeout, this, [this] {
        lists_->RefreshTimes();
        ShowOutput();
    });
    timer1_->start();
    timeDj_->start();
    seconds_->start();
    ShowOutput();
}

} // namespace kalvo
