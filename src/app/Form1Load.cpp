// Loading the main window up to the moment when the user can work, and closing it.

#include "app/Form1.h"

#include "app/ConsolePanel.h"
#include "app/DamagedFiles.h"
#include "app/Desk.h"
#include "app/EqualizerCommand.h"
#include "app/FirstStepsCommands.h"
#include "app/MetaOutput.h"
#include "app/SessionMemory.h"
#include "app/StatusLine.h"
#include "app/TagCommands.h"
#include "archive/ui/frmTitelEinlesen.h"
#include "playback/OutputChoice.h"
#include "playback/ui/MixerPanel.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

namespace kalvo {

namespace {

constexpr QSize kSmallestScreen(800, 600);
const QString kMixerSection = QStringLiteral("Mixer");
const QString kEqualizerSection = QStringLiteral("Equalizer");
const QString kMeterSection = QStringLiteral("VU Meter");

QString WindowValuesPath(const Desk& desk) {
    return desk.folder.Path(QStringLiteral("\\kalvo.dll"));
}

/** Written back as it stands, so that the key exists from the first end on. */
void KeepSetting(Settings& settings, const QString& section, const char* key, const QString& fallback) {
    const QString name = QString::fromUtf8(key);
    if (const QString value = settings.GetSetting(section, name, fallback); !value.isEmpty()) {
        settings.PutSetting(section, name, value);
    }
}

} // namespace

bool Form1::Load() {
    ShowProgress(QStringLiteral("Grundparameter setzen..."));
    const QStringList damaged = SetDamagedFilesAside(desk_.folder, desk_.clock);
    ShowProgress(QStringLiteral("Start"));
    values_ = WindowValues::Read(WindowValuesPath(desk_)); // the panels are built after them
    ShowProgress(QStringLiteral("Skin setzen..."));
    ApplyStyle();
    Build();
    SetBasics();
    for (const QString& message : damaged) {
        status_->Warn(message);
    }
    ShowProgress(QStringLiteral("Soundkarten suchen..."));
    if (!InitOutput()) {
        xMessageBox::Ask(nullptr, QStringLiteral("Digital output"),
                         QStringLiteral("Error: Couldn't Initialize Digital Output"), {QStringLiteral("OK")},
                         xMessageBox::Sign::Error);
        return false;
    }
    equalizer_->Load();
    CheckScreen();
    ReadMixer();
    OpenArchive();
    RestoreLists();
    StartTimers();
    PlaceWindow();
    return true;
}

void Form1::ShowProgress(const QString& text) {
    if (status_ != nullptr) {
        status_->Tell(text);
    }
    Q_EMIT LoadProgress(text);
}

void Form1::SetBasics() {
    if (!desk_.foldersCreated) {
        status_->Warn(QStringLiteral("Der Datenordner kann nicht angelegt werden: ") + desk_.folder.Root());
    }
    meta_ = new MetaOutput(desk_.mixer, desk_.settings, desk_.writer, desk_.folder.Path(QStringLiteral("\\meta.dat")),
                           this);
    session_ = new SessionMemory(desk_, questions_, desk_.writer, this);
    connect(session_, &SessionMemory::Damaged, status_, &StatusLine::Warn);
    connect(session_, &SessionMemory::Resumed, this,
            [this] { console_->Mixing().SetVolume(desk_.layer.Audio().GetVolume(audio::Output::Main)); });
}

bool Form1::InitOutput() {
    const QStringList names = desk_.layer.DeviceNames();
    const int wanted = commandLine_.device ? *commandLine_.device : OutputChoice::Read(desk_.settings).Resolve(names);
    return desk_.layer.InitAudio(wanted, OutputBuffer::Frames(OutputBuffer::Read(desk_.settings)));
}

void Form1::CheckScreen() {
    const QSize screen = QApplication::primaryScreen()->size();
    if (screen.width() < kSmallestScreen.width() || screen.height() < kSmallestScreen.height()) {
        xMessageBox::Ask(nullptr, QStringLiteral("Kalvo"),
                         QStringLiteral("Für Kalvo wird eine Bildschirmeinstellung von mindestens 800 x 600 benötigt, "
                                        "bitte ändern Sie die Eigenschaften Ihrer Grafikkarte"),
                         {QStringLiteral("OK")});
    }
}

void Form1::ReadMixer() {
    MixerOptions options = MixerOptions::Read(desk_.settings);
    options.continuous = values_.continuous;
    options.automatic = values_.automatic;
    desk_.mixer.SetOptions(options);
    const int volume =
        std::clamp(desk_.settings.GetNumber(kEqualizerSection, QStringLiteral("Lautstärke"), 35), 0, 100);
    desk_.mixer.SetMasterVolume(volume);
    console_->Mixing().SetVolume(volume);
    Q_EMIT LoadProgress(FadeModeCaption(options.mode));
    Q_EMIT LoadProgress(ContinuousCaption(options.continuous));
    Q_EMIT LoadProgress(AutomaticCaption(options.automatic));
}

void Form1::OpenArchive() {
    connect(&desk_.archive, &Archive::Message, status_, &StatusLine::Warn);
    connect(&desk_.keeper, &PlaylistKeeper::Told, status_, &StatusLine::Warn);
    connect(&desk_.archive, &Archive::IndexReady, this,
            [this] { ShowProgress(QStringLiteral("%1 Titel gefunden").arg(desk_.archive.Count())); });
    desk_.archive.Open(desk_.folder);
}

void Form1::RestoreLists() {
    desk_.keeper.Restore();
    ShowProgress(QStringLiteral("%1 Titel im Musikarchiv...").arg(desk_.archive.Count()));
    session_->Begin();
    AddFiles(commandLine_.files);
    if (!commandLine_.demonstration && commandLine_.files.isEmpty()) {
        firstSteps_->OfferAtStart();
    }
}

void Form1::closeEvent(QCloseEvent* event) {
    if (closing_) {
        event->accept();
        return;
    }
    const QString answer = xMessageBox::Ask(
        this, QStringLiteral("Achtung!"), QStringLiteral("Wollen Sie Kalvo wirklich beenden?"),
        {QStringLiteral("Ja"), QStringLiteral("Nein"), QStringLiteral("Abbrechen")}, xMessageBox::Sign::Warning);
    if (answer == QStringLiteral("Nein") || !tags_->MayEnd()) {
        event->ignore();
        return;
    }
    event->accept();
    End();
}

void Form1::End() {
    if (closing_)
        return;
    closing_ = true;
    tags_->FinishSaving();
    status_->Tell(QStringLiteral("Beendet"));
    status_->repaint(); // the end leaves no time for events
    delete import_.data();
    timer1_->stop();
    timeDj_->stop();
    desk_.layer.StopAudio();
    meta_->Refresh();
    if (Save()) {
        session_->End(); // else the journal is the only place that holds the lists
    }
    QApplication::quit();
}

bool Form1::Save() {
    values_.geometry = normalGeometry();
    values_.maximised = isMaximized();
    values_.continuous = desk_.mixer.Options().continuous;
    values_.automatic = desk_.mixer.Options().automatic;
    values_.Write(WindowValuesPath(desk_));
    {
        Settings& settings = desk_.settings;
        const Settings::Pass pass(settings);
        const MixerOptions& options = desk_.mixer.Options();
        settings.PutNumber(kEqualizerSection, QStringLiteral("Lautstärke"),
                           desk_.layer.Audio().GetVolume(audio::Output::Main));
        KeepSetting(settings, kEqualizerSection, "Pegelabsenkung", QStringLiteral("50"));
        KeepSetting(settings, kEqualizerSection, "Mikrofonpegel", QStringLiteral("80"));
        KeepSetting(settings, kMeterSection, "Style", QStringLiteral("Analyzer"));
        KeepSetting(settings, kMeterSection, "Farbe", {}); // without a default: absent until it is chosen
        settings.PutSwitch(kMixerSection, QStringLiteral("WlLoeschen"), options.removePlayed);
        settings.PutNumber(kMixerSection, QStringLiteral("Überblendgeschwindigkeit"), options.fadeInterval);
        settings.PutNumber(kMixerSection, QStringLiteral("Umschaltzeitpunkt"), options.switchOver);
    }
    const bool saved = desk_.keeper.SaveNow();
    if (!saved) {
        questions_.Tell(QStringLiteral("Die Wiedergabelisten konnten nicht gespeichert werden."));
    }
    return saved;
}

} // namespace kalvo
