#include "app/ArchiveCommands.h"

#include "app/DeskActions.h"
#include "app/WindowValues.h"
#include "archive/Archive.h"
#include "archive/ArchiveStatements.h"
#include "archive/ArchiveTexts.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/frmDoubletten.h"
#include "archive/ui/frmSuchen.h"
#include "archive/ui/frmTitelLoeschen.h"
#include "widgets/HourGlass.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QFile>

namespace kalvo {

namespace {

const QString kYes = QStringLiteral("Ja");
const QString kNo = QStringLiteral("Nein");

/** Between two looks for what other programs have written into the archive. */
constexpr int kFollowMilliseconds = 5000;

void Present(QWidget& dialog) {
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

} // namespace

ArchiveCommands::ArchiveCommands(Archive& archive, ArchivePanel& panel, DeskActions& actions, WindowValues& values,
                                 QList<QWidget*> beside, QWidget& window)
    : QObject(&window), archive_(archive), panel_(panel), beside_(std::move(beside)), window_(window), undo_(archive) {
    BuildMenus(actions);
    KeepTree(values);
    connect(&followTimer_, &QTimer::timeout, &archive_, &Archive::FollowOthers);
    followTimer_.start(kFollowMilliseconds);
    connect(&panel_, &ArchivePanel::DeleteRequested, this, &ArchiveCommands::DeleteMarkedTitles);
    connect(&undo_, &ArchiveUndo::Told, this, &ArchiveCommands::Told);
}

ArchiveCommands::~ArchiveCommands() = default;

template<typename Run>
QAction* ArchiveCommands::Add(const QString& name, const QString& text, Run run) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setAutoRepeat(false);
    connect(action, &QAction::triggered, this, run);
    return action;
}

void ArchiveCommands::BuildMenus(DeskActions& actions) {
    QAction* search = Add(QStringLiteral("Suchen"), QStringLiteral("&Suchen..."), [this] { ShowSearch(); });
    search->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F));
    QAction* duplicates =
        Add(QStringLiteral("Doubletten"), QStringLiteral("&Doubletten suchen..."), [this] { ShowDuplicates(); });
    // Del stands in the text alone: the panel answers it, elsewhere it means something else.
    QAction* marked =
        Add(QStringLiteral("TitelAusMusikarchivlLoeschen"),
            QStringLiteral("&Markierte Titel aus dem Musikarchiv löschen...\tEntf"), [this] { DeleteMarkedTitles(); });
    QAction* one = Add(QStringLiteral("TitelMitDateiLoeschen"), QStringLiteral("Titel mit Da&tei löschen..."),
                       [this] { DeleteOneTitle(); });
    QAction* all = Add(QStringLiteral("AlleTitelAusMusikarchivLoeschen"),
                       QStringLiteral("&Alle Titel aus dem Musikarchiv löschen..."), [this] { DeleteWholeArchive(); });
    QAction* properties = Add(QStringLiteral("EigenschaftenMusikarchiv"), QStringLiteral("&Eigenschaften..."),
                              [this] { ShowArchiveProperties(); });
    QAction* full = new QAction(QStringLiteral("&Vollansicht"), this);
    full->setObjectName(QStringLiteral("MAVollansicht"));
    full->setCheckable(true);
    actions.fullViews->addAction(full);
    connect(full, &QAction::toggled, this, &ArchiveCommands::ShowFullView); // also when another full view ends it
    full->setShortcut(QKeySequence(Qt::Key_F11));

    QMenu& menu = *actions.archiveMenu;
    menu.addSeparator();
    menu.addActions({search, duplicates});
    menu.addSeparator();
    menu.addActions({marked, one, all});
    menu.addSeparator();
    menu.addActions({properties, full});
    panel_.AddContextActions({marked, one});
    panel_.AddContextActions({search, full});
}

/** The tree comes back as it was left, once there is an archive to build missing lists from. */
void ArchiveCommands::KeepTree(WindowValues& values) {
    panel_.SetTreeWidth(values.treeWidth);
    const auto show = [this, &values] {
        if (values.treeShown)
            panel_.ShowTree(true);
    };
    // Once: the index comes anew after large changes, when the user may have folded the tree away.
    connect(&archive_, &Archive::IndexReady, this, show,
            static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection));
    connect(&panel_, &ArchivePanel::TreeChanged, this, [this, &values] {
        values.treeShown = panel_.IsTreeShown();
        values.treeWidth = panel_.TreeWidth();
    });
}

bool ArchiveCommands::Delete(const QList<qint64>& numbers) {
    const int row = archive_.RowOf(numbers.constFirst());
    const HourGlass hourGlass;
    const WriteResult deleted = archive_.DeleteTitles(numbers);
    panel_.Refresh();
    if (!deleted.reason.isEmpty())
        Q_EMIT Told(deleted.reason);
    if (deleted && row >= 0 && archive_.RowCount() > 0)
        panel_.GoToRow(qMin(row, archive_.RowCount() - 1));
    return deleted.done;
}

void ArchiveCommands::DeleteMarkedTitles() {
    const QList<qint64> numbers = panel_.MarkedNumbers();
    if (numbers.isEmpty())
        return;
    const QString answer =
        xMessageBox::Ask(&window_, QStringLiteral("Löschen"),
                         QStringLiteral("Achtung+++ Die markierten Titel aus dem Musikarchiv löschen? +++Achtung"),
                         {kYes, kNo}, xMessageBox::Sign::Warning);
    if (answer == kYes)
        Delete(numbers);
}

void ArchiveCommands::DeleteOneTitle() {
    const TitleRecord record = panel_.CurrentRecord();
    if (record.Nr == 0)
        return;
    delete deletion_;
    deletion_ = new frmTitelLoeschen(record.Pfad, &window_);
    deletion_->setAttribute(Qt::WA_DeleteOnClose);
    connect(deletion_, &frmTitelLoeschen::Confirmed, this,
            [this, nr = record.Nr, path = record.Pfad](bool withFile) { DeleteTitle(nr, path, withFile); });
    Present(*deletion_);
}

void ArchiveCommands::DeleteTitle(qint64 nr, const QString& path, bool withFile) {
    if (!Delete({nr}) || !withFile)
        return;
    QFile file(path);
    if (!file.remove())
        Q_EMIT Told(QStringLiteral("Die Datei konnte nicht gelöscht werden: ") + path);
}

void ArchiveCommands::DeleteWholeArchive() {
    const auto sure = [this](const QString& question) {
        return xMessageBox::Ask(&window_, QStringLiteral(" Löschen"), question,
                                {kYes, kNo, QStringLiteral("Abbrechen")}, xMessageBox::Sign::Warning) == kYes;
    };
    if (sure(QStringLiteral("Achtung!!!, Das gesamte Musikarchiv löschen?")) &&
        sure(QStringLiteral("Achtung+++ Sind Sie sicher? +++Achtung"))) {
        const HourGlass hourGlass;
        if (const WriteResult deleted = archive_.DeleteAll(); deleted)
            panel_.ShowSource(ArchiveStatements::Default()); // what comes in next is not hidden by an old search
        else
            Q_EMIT Told(deleted.reason);
    }
    panel_.ShowCountText(ArchiveTexts::CountAfterDeleteAll());
}

void ArchiveCommands::ShowArchiveProperties() {
    xMessageBox::Ask(&window_, QStringLiteral(" Kalvo"), ArchiveTexts::Properties(archive_.Count()),
                     {QStringLiteral("OK")});
}

void ArchiveCommands::ShowFullView(bool full) {
    for (QWidget* part : beside_)
        part->setVisible(!full);
}

void ArchiveCommands::ShowSearch() {
    if (!search_) {
        search_ = new frmSuchen(archive_, panel_, &window_);
        search_->setAttribute(Qt::WA_DeleteOnClose);
    }
    Present(*search_);
}

void ArchiveCommands::ShowDuplicates() {
    if (!duplicates_) {
        duplicates_ = new frmDoubletten(archive_, &window_);
        duplicates_->setAttribute(Qt::WA_DeleteOnClose);
        connect(duplicates_, &frmDoubletten::Deleted, &panel_, &ArchivePanel::Refresh);
    }
    Present(*duplicates_);
}

} // namespace kalvo
