#include "app/MeasureCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/OptionCommands.h"
#include "archive/ui/ArchivePanel.h"
#include "playback/ui/frmMessen.h"

#include <QAction>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kLookAfter = 500; // ms
constexpr int kTitlesAhead = 4; ///< of each list, from the current one on

} // namespace

MeasureCommands::MeasureCommands(Desk& desk, DeskActions& actions, ArchivePanel& archive, OptionCommands& options,
                                 QWidget& window)
    : QObject(&window),
      desk_(desk),
      archive_(archive),
      window_(window),
      measurer_(desk.folder.Path(QStringLiteral("\\Messung.db")), desk.clock),
      run_(desk.archive, measurer_) {
    auto* measure = new QAction(tr("&BPM und Lautheit messen..."), this);
    measure->setObjectName(QStringLiteral("BpmMessen"));
    measure->setAutoRepeat(false);
    connect(measure, &QAction::triggered, this, &MeasureCommands::Open);
    actions.archiveMenu->addAction(measure);
    lookSoon_.setSingleShot(true);
    lookSoon_.setInterval(kLookAfter);
    connect(&lookSoon_, &QTimer::timeout, this, &MeasureCommands::LookAhead);
    for (const int player : {1, 2}) {
        const auto look = [this] { lookSoon_.start(); };
        connect(&desk_.List(player), &Playlist::Changed, this, look);
        connect(&desk_.List(player), &Playlist::CurrentChanged, this, look);
    }
    connect(&options, &OptionCommands::Confirmed, this, &MeasureCommands::ReadSwitch);
    desk_.mixer.SetTitleGain([this](const QString& path) { return GainOf(path); });
    ReadSwitch();
}

MeasureCommands::~MeasureCommands() {
    desk_.mixer.SetTitleGain([](const QString&) { return 0.0; });
    delete dialog_.data();
}

void MeasureCommands::ReadSwitch() {
    levelling_ = desk_.settings.GetSwitch(QStringLiteral("Mixer"), QStringLiteral("LautheitAusgleich"), false);
    lookSoon_.start();
}

void MeasureCommands::LookAhead() {
    if (!levelling_)
        return;
    for (const int player : {1, 2}) {
        const Playlist& list = desk_.List(player);
        const int first = std::max(0, list.CurrentRow());
        for (int row = first; row < std::min(list.Count(), first + kTitlesAhead); ++row)
            measurer_.Request(list.At(row).path);
    }
}

double MeasureCommands::GainOf(const QString& path) {
    const std::optional<audio::TitleMeasures> known = measurer_.Known(path);
    return levelling_ && known ? LevellingGain(*known) : 0;
}

void MeasureCommands::Open() {
    if (dialog_ == nullptr) {
        const auto marked = [this] {
            const QList<qint64> numbers = archive_.MarkedNumbers();
            return std::vector<qint64>(numbers.begin(), numbers.end());
        };
        const auto all = [this] { return desk_.archive.Select(QStringLiteral("Select * From Daten")); };
        dialog_ = new frmMessen(run_, marked, all, &window_);
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
    }
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

} // namespace kalvo
