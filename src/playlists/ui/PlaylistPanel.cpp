#include "playlists/ui/PlaylistPanel.h"

#include "playlists/ListCaption.h"
#include "playlists/ui/PlaylistHeader.h"

#include <QAction>
#include <QEvent>
#include <QVBoxLayout>

namespace kalvo {

PlaylistPanel::PlaylistPanel(Playlist& list, QWidget* parent)
    : QWidget(parent),
      list_(list),
      header_(new PlaylistHeader(list.Number(), this)),
      view_(new PlaylistView(list, this)),
      name_(PlaylistName({})) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(header_);
    column->addWidget(view_, 1);
    view_->installEventFilter(this);
    view_->viewport()->installEventFilter(this);
    connect(&list, &Playlist::Changed, this, &PlaylistPanel::ShowCaption);
    connect(view_, &PlaylistView::SelectionChanged, this, [this] {
        ShowCaption();
        if (view_->FirstSelectedRow() >= 0)
            Q_EMIT Activated(list_.Number());
    });
    ShowCaption();
}

void PlaylistPanel::SetLayoutMode(LayoutMode mode) {
    mode_ = mode;
    view_->SetLayoutMode(mode);
    header_->TakeUnits(); // the styling of a skin may come after the head's own change
    ShowEnd();
}

void PlaylistPanel::SetPlaylistName(const QString& name) {
    name_ = name;
    ShowCaption();
}

void PlaylistPanel::SetWishedBy(const QString& guest) {
    guest_ = guest;
    ShowCaption();
}

QString PlaylistPanel::Caption() const {
    if (!otherCaption_.isEmpty())
        return otherCaption_;
    return guest_.isEmpty() ? ListCaption(list_.Number(), view_->FirstSelectedRow(), list_.Count(), name_)
                            : WishCaption(list_.Number(), guest_);
}

void PlaylistPanel::ResetCaption() {
    header_->Caption().SetText(QStringLiteral("Player %1").arg(list_.Number()));
}

void PlaylistPanel::SetOtherCaption(const QString& caption) {
    otherCaption_ = caption;
    ShowCaption();
}

void PlaylistPanel::SetEndTime(const QString& rest, const QString& until) {
    rest_ = rest;
    until_ = until;
    ShowEnd();
}

void PlaylistPanel::SetContextActions(const QList<QAction*>& actions) {
    const QList<QAction*> old = view_->actions();
    for (QAction* action : old)
        view_->removeAction(action);
    view_->addActions(actions);
}

bool PlaylistPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress)
        Q_EMIT Activated(list_.Number());
    return QWidget::eventFilter(watched, event);
}

void PlaylistPanel::ShowCaption() {
    header_->Caption().SetText(Caption());
}

void PlaylistPanel::ShowEnd() {
    QStringList parts = {rest_, until_};
    if (mode_ == LayoutMode::Narrow)
        parts.removeFirst();
    parts.removeAll(QString());
    header_->End().SetText(parts.join(QStringLiteral(", ")));
}

} // namespace kalvo
