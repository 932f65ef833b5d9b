#include "app/HandbookCommands.h"

#include "app/DeskActions.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollArea>
#include <QStackedWidget>
#include <QUrl>

namespace kalvo {

namespace {

constexpr Qt::Key kHelpKey = Qt::Key_F12;

QString ClassName(const QObject& object) {
    return QString::fromLatin1(object.metaObject()->className()).section(QStringLiteral("::"), -1);
}

/** Where the way to the window's page begins: at the page that is shown, wherever the focus is, else at the focus. */
const QWidget* InnermostPart(const QWidget& focus) {
    const auto* pages = focus.window()->findChild<QStackedWidget*>(QStringLiteral("Seiten"));
    if (pages == nullptr)
        return &focus;
    const auto* scrolled = qobject_cast<const QScrollArea*>(pages->currentWidget());
    return scrolled != nullptr ? scrolled->widget() : pages->currentWidget();
}

} // namespace

HandbookCommands::HandbookCommands(DeskActions& actions, QWidget& window, Handbook handbook, Opener opener)
    : QObject(&window),
      window_(window),
      handbook_(std::move(handbook)),
      opener_(opener ? std::move(opener) : Opener(&QDesktopServices::openUrl)),
      open_(new QAction(tr("&Handbuch"), this)) {
    open_->setObjectName(QStringLiteral("Handbuch"));
    open_->setShortcut(kHelpKey);
    open_->setAutoRepeat(false);
    actions.helpMenu->insertAction(actions.helpMenu->actions().value(0), open_);
    connect(open_, &QAction::triggered, this, [this] { Open(handbook_.FirstPage()); });
    qApp->installEventFilter(this);
}

/** The main window has its menu for the key; dialogs, also those that let no key through to it, have only this. */
bool HandbookCommands::eventFilter(QObject* watched, QEvent* event) {
    const bool asks = event->type() == QEvent::ShortcutOverride;
    if ((!asks && event->type() != QEvent::KeyPress) || !watched->isWidgetType())
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto* focus = static_cast<QWidget*>(watched);
    if (key->key() != kHelpKey || key->modifiers() != Qt::NoModifier || focus->window() == &window_)
        return false;
    event->accept();
    if (!asks && !key->isAutoRepeat())
        Open(PageFor(*focus));
    return true;
}

QString HandbookCommands::PageFor(const QWidget& focus) const {
    for (const QWidget* part = InnermostPart(focus); part != nullptr;
         part = part->isWindow() ? nullptr : part->parentWidget()) {
        for (const QString& name : {part->objectName(), ClassName(*part)}) {
            if (QString page = handbook_.PageOf(name); !page.isEmpty())
                return page;
        }
    }
    return handbook_.FirstPage();
}

void HandbookCommands::Open(const QString& page) {
    const QString shown = QDir::toNativeSeparators(page);
    if (!handbook_.IsThere()) {
        xMessageBox::Ask(QApplication::activeWindow(), tr("Handbuch"),
                         tr("Das Handbuch ist nicht installiert. Es gehört in den Ordner:\n%1")
                             .arg(QDir::toNativeSeparators(handbook_.Folder())),
                         {QStringLiteral("OK")}, xMessageBox::Sign::Warning);
    } else if (opener_(QUrl::fromLocalFile(page))) {
        Q_EMIT Told(tr("Das Handbuch öffnet sich im Browser: %1").arg(shown));
    } else {
        xMessageBox::Ask(QApplication::activeWindow(), tr("Handbuch"),
                         tr("Für das Handbuch ist kein Browser eingerichtet. Öffnen Sie diese Datei auf einem Gerät "
                            "mit Browser:\n%1")
                             .arg(shown),
                         {QStringLiteral("OK")}, xMessageBox::Sign::Warning);
    }
}

} // namespace kalvo
