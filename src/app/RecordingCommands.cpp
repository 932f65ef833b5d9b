#include "app/RecordingCommands.h"

#include "app/DeckPresenter.h"
#include "app/Desk.h"
#include "app/StatusLine.h"
#include "playback/AudioModule.h"
#include "playback/ui/frmMitschnitt.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QCoreApplication>
#include <QFileInfo>
#include <QMenu>

#include <algorithm>
#include <array>
#include <cmath>

namespace kalvo {

namespace {

constexpr int kRecordingInterval = 50;           // ms
constexpr std::size_t kLevelFrames = 44100 / 20; // what sounds between two displays

std::unique_ptr<audio::EncoderLibrary> LoadEncoder() {
    return EncoderModule(QCoreApplication::applicationDirPath()).Create();
}

RecordingOptions ReadOptions(const Desk& desk) {
    return RecordingOptions::Read(desk.settings, desk.folder.Path(QStringLiteral("\\Mitschnitte")));
}

/** Peaks of what has just sounded; looks on only, others may measure the same. */
audio::Levels LevelsNow(audio::AudioLibrary& library) {
    std::array<float, 2 * kLevelFrames> samples;
    const std::size_t count =
        library.GetOutputData(audio::Output::Main, audio::DataKind::Samples, samples.data(), samples.size());
    audio::Levels levels;
    for (std::size_t i = 0; i + 1 < count; i += 2) {
        levels.left = std::max(levels.left, std::abs(samples.at(i)));
        levels.right = std::max(levels.right, std::abs(samples.at(i + 1)));
    }
    return levels;
}

} // namespace

RecordingCommands::RecordingCommands(Desk& desk, QMenu& toolsMenu, StatusLine& status, QWidget& window)
    : QObject(&window), desk_(desk), status_(status), window_(window), recorder_(desk.mixer, LoadEncoder) {
    QAction* action = toolsMenu.addAction(QStringLiteral("&Mitschnitt..."), this, &RecordingCommands::Mitschnitt);
    action->setObjectName(QStringLiteral("Mitschnitt"));
    display_.setInterval(kRecordingInterval);
    connect(&display_, &QTimer::timeout, this, &RecordingCommands::Refresh);
    connect(&recorder_, &MasterRecorder::Changed, this, &RecordingCommands::ShowChange);
    connect(&recorder_, &MasterRecorder::Failed, this, &RecordingCommands::TellFailure);
    connect(&recorder_, &MasterRecorder::Told, &status, &StatusLine::Warn);
}

RecordingCommands::~RecordingCommands() = default;

void RecordingCommands::Mitschnitt() {
    if (!dialog_) {
        const RecordingOptions chosen = ReadOptions(desk_);
        dialog_ = new frmMitschnitt(chosen, desk_.clock.Now(), &window_);
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
        connect(dialog_, &frmMitschnitt::StartRequested, &recorder_, &MasterRecorder::Start);
        connect(dialog_, &frmMitschnitt::StopRequested, &recorder_, &MasterRecorder::Stop);
        connect(dialog_, &frmMitschnitt::OptionsChosen, this, [this](const RecordingOptions& options) {
            options.Write(desk_.settings);
            recorder_.AskFreeSpace(options.folder);
        });
        if (recorder_.IsIdle())
            recorder_.AskFreeSpace(chosen.folder);
        display_.start();
        Refresh();
    }
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

void RecordingCommands::Refresh() {
    const RecordingState& state = recorder_.State();
    if (dialog_) {
        const audio::Levels levels = LevelsNow(desk_.layer.Audio());
        dialog_->ShowLevels(LevelShare(levels.left), LevelShare(levels.right));
        dialog_->ShowState(state);
        if (recorder_.IsIdle())
            dialog_->SuggestName(desk_.clock.Now());
    }
    status_.SetRecording(recorder_.IsIdle() ? QString() : QStringLiteral("Mitschnitt ") + RecordingTime(state.seconds));
    if (!dialog_ && recorder_.IsIdle())
        display_.stop();
}

void RecordingCommands::ShowChange() {
    const RecordingState& state = recorder_.State();
    const QString file = QFileInfo(state.path).fileName();
    if (state.status == RecordingStatus::Running)
        status_.Tell(QStringLiteral("Mitschnitt läuft: ") + file);
    else if (state.status == RecordingStatus::Idle && !state.path.isEmpty())
        status_.Tell(QStringLiteral("Mitschnitt beendet: ") + file);
    display_.start();
    Refresh();
}

/** Not over the deck when nobody has its window open: the show goes on. */
void RecordingCommands::TellFailure(const QString& message) {
    status_.Warn(QString(message).replace(u'\n', u' '));
    if (dialog_)
        xMessageBox::Ask(dialog_, QStringLiteral("Mitschnitt"), message, {QStringLiteral("OK")},
                         xMessageBox::Sign::Warning);
}

} // namespace kalvo
