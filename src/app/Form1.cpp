#include "app/Form1.h"

#include "app/ConsolePanel.h"
#include "app/Desk.h"
#include "app/ListBand.h"
#include "app/ListCommands.h"
#include "app/StatusLine.h"
#include "app/WatchCommands.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/frmTitelEinlesen.h"
#include "playback/OutputChoice.h"
#include "playback/ui/MixerPanel.h"
#include "widgets/KeySplitter.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QStandardPaths>

#include <algorithm>

namespace kalvo {

namespace {

constexpr QSize kSmallest(800, 600);
constexpr QSize kDefaultSize(1280, 800);
const QString kStyleKey = QStringLiteral("Style");

QString MusicFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
}

/** The first of them that is there, else the home folder: a scan must not begin with the whole disk. */
QString FirstFolder(const QStringList& folders) {
    const auto found = std::find_if(folders.begin(), folders.end(),
                                    [](const QString& folder) { return !folder.isEmpty() && QDir(folder).exists(); });
    return found == folders.end() ? QDir::homePath() : *found;
}

} // namespace

Form1::Form1(Desk& desk, const CommandLine& commandLine, QWidget* parent)
    : QMainWindow(parent),
      desk_(desk),
      commandLine_(commandLine),
      actions_(this),
      questions_(*this),
      listActions_(desk.list1, desk.list2, questions_),
      intake_(listActions_, desk.settings),
      timer1_(new QTimer(this)),
      timeDj_(new QTimer(this)),
      seconds_(new QTimer(this)) {
    setObjectName(QStringLiteral("Form1"));
    setWindowTitle(QStringLiteral("Kalvo"));
    setMinimumSize(kSmallest); // not that of the layout of the moment, which folds when the window becomes smaller
}

Form1::~Form1() = default;

// ---- output

void Form1::FillDeviceMenu() {
    QMenu* menu = actions_.DeviceMenu();
    menu->clear();
    audio::OutputInfo info;
    desk_.layer.Audio().GetInfo(audio::Output::Main, info);
    const QStringList names = desk_.layer.DeviceNames();
    for (int device = 0; device < names.size(); ++device) {
        QAction* action = menu->addAction(names.at(device), this, [this, device] { ChooseDevice(device); });
        action->setCheckable(true);
        action->setChecked(device == desk_.layer.OutputDevice());
    }
}

void Form1::ChooseDevice(int device) {
    if (desk_.mixer.OnAirPlayer() != 0 &&
        questions_.Ask(QStringLiteral("Achtung!"),
                       QStringLiteral("Die Musik wird beim Wechsel der Soundkarte angehalten. Trotzdem wechseln?")) !=
            QStringLiteral("Ja")) {
        return;
    }
    desk_.mixer.Stop(1);
    desk_.mixer.Stop(2);
    const int before = desk_.layer.OutputDevice();
    const int buffer = OutputBuffer::Frames(OutputBuffer::Read(desk_.settings));
    desk_.layer.StopAudio();
    if (!desk_.layer.InitAudio(device, buffer)) {
        questions_.Tell(QStringLiteral("Error: Couldn't Initialize Digital Output"));
        if (!desk_.layer.InitAudio(before, buffer))
            return;
    }
    desk_.mixer.SetMasterVolume(console_->Mixing().Volume());
    OutputChoice{desk_.layer.OutputDevice(), desk_.layer.DeviceNames().value(desk_.layer.OutputDevice())}.Write(
        desk_.settings);
    ShowOutput();
}

void Form1::ShowOutput() {
    audio::OutputInfo info;
    if (desk_.layer.Audio().GetInfo(audio::Output::Main, info)) {
        status_->SetOutput(QString::fromStdString(info.deviceName));
        status_->SetStarvations(info.starvations, info.overruns);
    }
}

// ---- looks

void Form1::ApplyStyle() {
    const auto setting = [this](const char* key, const QString& fallback) {
        return desk_.settings.GetSetting(kStyleKey, QLatin1String(key), fallback);
    };
    ShowStyle(setting("Skin", QStringLiteral("Light Green")), setting("Schriftgrad", QStringLiteral("klein")),
              setting("Buttongroesse", QStringLiteral("klein")));
}

void Form1::ShowStyle(const QString& skin, const QString& fontSize, const QString& buttonSize) {
    SkinStyle::Apply(*qApp, skin, fontSize, buttonSize);
    const auto check = [](const QActionGroup& group, const QString& value) {
        for (QAction* action : group.actions()) {
            action->setChecked(action->data().toString() == value);
        }
    };
    check(*actions_.skins, skin);
    check(*actions_.fontSizes, fontSize);
    check(*actions_.buttonSizes, buttonSize);
    if (bands_ != nullptr) {
        FoldLayout(size());
    }
}

void Form1::PlaceWindow() {
    const QRect available = QApplication::primaryScreen()->availableGeometry();
    QRect place(QPoint(), kDefaultSize.boundedTo(available.size()));
    place.moveCenter(available.center());
    bool onScreen = false;
    for (const QScreen* screen : QApplication::screens()) {
        onScreen = onScreen || screen->availableGeometry().intersects(values_.geometry);
    }
    const QRect wanted = onScreen ? values_.geometry : place;
    FoldLayout(wanted.size()); // first, or the larger layout's parts would keep the window large
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    layout()->activate();
    setGeometry(wanted);
    if (values_.maximised) {
        setWindowState(Qt::WindowMaximized);
    }
    FocusSearch();
}

void Form1::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (bands_ != nullptr && LayoutModeFor(width(), SkinStyle::Units().F(), height()) != mode_) {
        FoldLayout(size());
    }
}

void Form1::FoldLayout(const QSize& size) {
    const FontUnits& units = SkinStyle::Units();
    mode_ = LayoutModeFor(size.width(), units.F(), size.height());
    const LayoutMode below = IsNarrow(mode_) ? LayoutMode::Narrow : mode_;
    const int margin = units.Gap(mode_ == LayoutMode::Low ? 1 : 2);
    centralWidget()->setContentsMargins(margin, 0, margin, 0);
    bands_->setHandleWidth(margin);
    console_->SetLayoutMode(mode_);
    lists_->SetLayoutMode(below);
    archive_->SetLayoutMode(below);
    status_->SetLayoutMode(mode_);
    // Two rows of each can always be seen.
    lists_->setMinimumHeight(units.ListHead() + 2 * units.TableRow() + units.G());
    archive_->setMinimumHeight(units.PanelHead() + units.ColumnHead() + 2 * units.TableRow() + units.G());
    const bool asGiven = mode_ == LayoutMode::Low || values_.consoleHeight == WindowValues().consoleHeight;
    const int console = asGiven ? units.ConsoleHeight(mode_) : values_.consoleHeight;
    const int rest = std::max(1, bands_->height() - console - 2 * margin);
    const int lists = mode_ == LayoutMode::Low ? rest / 2 : rest * 2 / 5;
    bands_->setSizes({console, lists, rest - lists});
}

void Form1::ShowOptions() {
    const MixerOptions& options = desk_.mixer.Options();
    timeDj_->setInterval(options.fadeInterval);
    status_->SetMode(FadeModeCaption(options.mode));
    status_->SetContinuous(ContinuousCaption(options.continuous));
    status_->SetAutomatic(AutomaticCaption(options.automatic));
    MixerPanel& mixing = console_->Mixing();
    mixing.SetMode(FadeModeText(options.mode));
    mixing.SetSpeed(options.fadeInterval);
    mixing.SetContinuous(options.continuous);
    mixing.SetAutomatic(options.automatic);
    for (QAction* action : actions_.modes->actions()) {
        action->setChecked(action->data().toString() == FadeModeText(options.mode));
    }
    for (QAction* action : actions_.speeds->actions()) {
        action->setChecked(action->data().toInt() == options.fadeInterval);
    }
    actions_.continuous->setChecked(options.continuous);
    actions_.automatic->setChecked(options.automatic);
    actions_.removePlayed->setChecked(options.removePlayed);
}

// ---- what the user asks for

void Form1::ImportTitles() {
    if (import_ == nullptr) {
        import_ = new frmTitelEinlesen(desk_.archive, FirstFolder({values_.importFolder, MusicFolder()}), this);
        import_->setAttribute(Qt::WA_DeleteOnClose);
        import_->ShowWatched(watch_->Folders());
        connect(import_, &frmTitelEinlesen::Finished, this, [this] {
            values_.importFolder = import_->Folder();
            archive_->Refresh();
            status_->Tell(QStringLiteral("%1 Titel gefunden").arg(desk_.archive.Count()));
        });
    }
    import_->show();
    import_->raise();
    import_->activateWindow();
}

void Form1::AskForFiles() {
    const QStringList files =
        QFileDialog::getOpenFileNames(this, QStringLiteral("Musikdateien hinzufügen"), FirstFolder({MusicFolder()}),
                                      QStringLiteral("Musikdateien (*.mp3 *.ogg *.MP3 *.OGG)"));
    AddFiles(files);
}

void Form1::AddFiles(const QStringList& files) {
    listCommands_->Take(files);
}

void Form1::ComeForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

void Form1::AddSelectedTitles(int player) {
    intake_.AddTitles(player, archive_->SelectedRecords());
}

void Form1::Demonstrate(const QStringList& titles) {
    TitleImport import(desk_.archive);
    import.Run(titles);
    archive_->Refresh();
    for (int index = 0; index < titles.size(); ++index) {
        if (const std::optional<TitleRecord> title = desk_.archive.FindByPath(titles.at(index))) {
            desk_.List(1 + index % 2).Append({EntryOf(*title)});
        }
    }
    status_->Tell(QStringLiteral("%1 Titel gefunden").arg(desk_.archive.Count()));
    desk_.mixer.Play(1, -1);
}

void Form1::FocusSearch() {
    if (QAction* view = actions_.fullViews->checkedAction(); view != nullptr && archive_->isHidden()) {
        view->setChecked(false);
    }
    if (auto* search = archive_->findChild<QLineEdit*>(QStringLiteral("Text1"))) {
        search->setFocus(Qt::ShortcutFocusReason);
        search->selectAll();
    }
}

void Form1::ShowAbout() {
    xMessageBox::Ask(
        this, QStringLiteral("Über Kalvo"),
        QStringLiteral("Kalvo\nVersion %1\n\nMusik live spielen und mischen.\nFreie Software unter der GPL 3 "
                       "oder neuer.")
            .arg(QApplication::applicationVersion()),
        {QStringLiteral("OK")}, xMessageBox::Sign::Program);
}

} // namespace kalvo
