#include "app/SideCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/JingleCommands.h"
#include "app/WishCommands.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/ArchiveSide.h"
#include "archive/ui/SelectedTitleView.h"
#include "live/ui/JingleLine.h"
#include "live/ui/WishPanel.h"

#include <QPixmap>

namespace kalvo {

namespace {

const QString kSideSection = QStringLiteral("Style");
const QString kSideKey = QStringLiteral("Seitenfeld");

} // namespace

SideCommands::SideCommands(const Parts& parts)
    : QObject(&parts.window),
      parts_(parts),
      showCover_(parts.window.findChild<QAction*>(QStringLiteral("CoverAnzeigen"))) {
    BuildMenu();
    AddWishes();
    AddJingle();
    ConnectCover();
}

SideCommands::~SideCommands() = default;

void SideCommands::BuildMenu() {
    showSide_ = parts_.actions.settingsMenu->addAction(QStringLiteral("S&eitenfeld neben dem Musikarchiv anzeigen"));
    showSide_->setObjectName(QStringLiteral("SeitenfeldAnzeigen"));
    showSide_->setCheckable(true);
    showSide_->setChecked(parts_.desk.settings.GetSwitch(kSideSection, kSideKey, true));
    parts_.archive.ShowSide(showSide_->isChecked());
    connect(showSide_, &QAction::triggered, this, [this](bool on) {
        parts_.desk.settings.PutSwitch(kSideSection, kSideKey, on);
        parts_.archive.ShowSide(on);
    });
}

void SideCommands::AddWishes() {
    auto* panel = new WishPanel(parts_.desk.wishes);
    connect(panel, &WishPanel::AddRequested, &parts_.wishes,
            [this](const Wish& wish) { parts_.wishes.Send(0, {wish}); });
    if (auto* open = parts_.window.findChild<QAction*>(QStringLiteral("Wunschzettel")))
        panel->AddContextAction(*open);
    parts_.archive.Side().Add(*panel, 1);
}

void SideCommands::AddJingle() {
    jingle_ = new JingleLine;
    parts_.archive.Side().Add(*jingle_);
    connect(&parts_.jingles, &JingleCommands::Looked, this, &SideCommands::ShowJingle);
    connect(&parts_.archive, &ArchivePanel::SideChanged, this, &SideCommands::ShowJingle);
}

void SideCommands::ShowJingle() {
    if (jingle_->isVisible())
        jingle_->Show(parts_.jingles.Next(), parts_.desk.clock.Now());
}

void SideCommands::ConnectCover() {
    connect(&parts_.archive, &ArchivePanel::CurrentTitleChanged, this, &SideCommands::ShowCover);
    connect(&parts_.archive, &ArchivePanel::SideChanged, this, &SideCommands::ShowCover);
    connect(showCover_, &QAction::toggled, this, &SideCommands::ShowCover);
    connect(&cover_, &TitleCover::Changed, this,
            [this](const QImage& cover) { parts_.archive.Title().ShowCover(QPixmap::fromImage(cover)); });
    ShowCover();
}

/** Nothing is read for a cover that nobody sees. */
void SideCommands::ShowCover() {
    const bool shown = showCover_->isChecked();
    parts_.archive.Title().SetCoverShown(shown);
    const bool isSeen = shown && !parts_.archive.Side().isHidden();
    cover_.Show(isSeen ? parts_.archive.CurrentRecord().Pfad : QString());
}

} // namespace kalvo
