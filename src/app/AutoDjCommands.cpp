#include "app/AutoDjCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "archive/ArchiveStatements.h"
#include "archive/ui/ArchiveCategories.h"
#include "archive/ui/ArchivePanel.h"
#include "live/ui/frmAutoDj.h"
#include "playlists/PlaylistActions.h"

#include <QLabel>
#include <QSet>
#include <QStatusBar>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

} // namespace

AutoDjCommands::AutoDjCommands(const Parts& parts)
    : QObject(&parts.window),
      parts_(parts),
      source_(parts.desk.archive),
      store_(parts.desk.folder.Path(u"\\AutoDJ.json"_s)),
      refill_({&parts.desk.list1, &parts.desk.list2}, source_, parts.desk.random, parts.desk.clock),
      refilling_(new QAction(u"Wiedergabelisten &nachfüllen"_s, this)),
      lamp_(new QLabel(u"Nachfüllen an"_s, &parts.status)) {
    auto* open = new QAction(u"&Auto DJ..."_s, this);
    open->setObjectName(u"AutoDj"_s);
    open->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_D));
    connect(open, &QAction::triggered, this, &AutoDjCommands::AutoDj);
    refilling_->setObjectName(u"AutoDjNachfuellen"_s);
    refilling_->setCheckable(true);
    connect(refilling_, &QAction::triggered, this, &AutoDjCommands::AutoDjNachfuellen);
    parts_.actions.toolsMenu->addActions({open, refilling_});
    lamp_->setObjectName(u"lblNachfuellen"_s);
    lamp_->setAccessibleName(u"Nachfüllen"_s);
    lamp_->setContentsMargins(0, 0, lamp_->fontMetrics().averageCharWidth(), 0);
    lamp_->hide();
    parts_.status.addPermanentWidget(lamp_);
    connect(&refill_, &AutoDjRefill::Changed, this, &AutoDjCommands::ShowRefill);
    connect(&refill_, &AutoDjRefill::Told, this, &AutoDjCommands::Told);
    connect(&parts_.desk.archive, &Archive::IndexReady, this, &AutoDjCommands::ResumeRefill);
}

AutoDjCommands::~AutoDjCommands() = default;

/** The first time that the archive can answer. */
void AutoDjCommands::ResumeRefill() {
    if (isResumed_)
        return;
    if (const QString told = store_.Load(parts_.desk.clock); !told.isEmpty())
        Q_EMIT Told(told);
    const AutoDjRefillOptions options = store_.refill;
    isResumed_ = true;
    refill_.SetOptions(options);
}

std::optional<qsizetype> AutoDjCommands::RefillTitles(qsizetype enough) const {
    const AutoDjRefillOptions& options = refill_.Options();
    if (!options.isOn || !isResumed_)
        return std::nullopt;
    QSet<qint64> numbers;
    for (const QString& value : options.selection.values) {
        for (const qint64 number : source_.Select(ArchiveStatements::DrawnTitles(options.selection.field, value)))
            numbers.insert(number);
        if (numbers.size() >= enough)
            break;
    }
    return std::min<qsizetype>(numbers.size(), enough);
}

void AutoDjCommands::AutoDj() {
    if (parts_.desk.archive.Count() == 0)
        return parts_.lists.Questions().Tell(
            u"Sie müssen erst Titel zum Musikarchiv hinzufügen bevor Sie Auto DJ starten können"_s);
    if (!isResumed_)
        return parts_.lists.Questions().Tell(parts_.desk.archive.IsLoading()
                                                 ? u"Das Musikarchiv wird noch geladen."_s
                                                 : u"Das Musikarchiv kann nicht gelesen werden."_s);
    if (!window_) {
        window_ = new frmAutoDj(
            {parts_.desk.folder, source_, parts_.desk.random, parts_.lists, parts_.desk.clock, store_, refill_},
            &parts_.window);
        window_->setAttribute(Qt::WA_DeleteOnClose);
        connect(window_, &frmAutoDj::Told, this, &AutoDjCommands::Told);
        connect(window_, &frmAutoDj::ListsWanted, this, &AutoDjCommands::BuildLists);
        connect(window_, &frmAutoDj::NormalViewWanted, this,
                [this] { parts_.archive.ShowSource(ArchiveStatements::Default()); });
        window_->show();
        window_->Start();
    }
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void AutoDjCommands::BuildLists() {
    parts_.archive.Categories().BuildCategoryLists([window = window_] {
        if (window)
            window->ReloadValues();
    });
}

/** With what it drew from last; without any values the window asks for them. */
void AutoDjCommands::AutoDjNachfuellen(bool on) {
    AutoDjRefillOptions options = refill_.Options();
    if (on && options.selection.values.isEmpty())
        options.selection = store_.last;
    options.isOn = on;
    refill_.SetOptions(options);
    ShowRefill();
    if (on && !refill_.Options().isOn)
        AutoDj();
}

void AutoDjCommands::ShowRefill() {
    const AutoDjRefillOptions& options = refill_.Options();
    refilling_->setChecked(options.isOn);
    lamp_->setVisible(options.isOn);
    lamp_->setText(refill_.IsStuck() ? u"Nachfüllen: kein Titel"_s : u"Nachfüllen an"_s);
    lamp_->setToolTip(refill_.StateText());
    if (!isResumed_ || store_.refill == options)
        return;
    store_.refill = options;
    if (!store_.Save())
        Q_EMIT Told(u"Die Auswahlen des Auto DJ können nicht geschrieben werden."_s);
}

} // namespace kalvo
