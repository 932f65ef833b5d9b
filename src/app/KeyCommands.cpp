#include "app/KeyCommands.h"

#include "app/ControlHints.h"
#include "app/DeskActions.h"
#include "app/frmTasten.h"
#include "archive/ui/ArchivePanel.h"
#include "widgets/DialogKeys.h"
#include "widgets/Mnemonics.h"
#include "widgets/PositionSlider.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>

namespace kalvo {

namespace {

constexpr int kVolumeStep = 5;
constexpr int kFaderStep = 10;
constexpr double kSkip = 5; // seconds

/** From the top to the bottom and from the left to the right, as the window is read. */
constexpr const char* kFocusOrder[] = {"cmdHinweisSchliessen",
                                       "SPos1",
                                       "cmdAnfang1",
                                       "cmdPlay1",
                                       "cmdPause1",
                                       "cmdStop1",
                                       "Command1",
                                       "Command2",
                                       "HScroll2",
                                       "hscroll1",
                                       "Command5",
                                       "Command6",
                                       "SFader",
                                       "cboModus",
                                       "cboTempo",
                                       "chkKontinuierlich",
                                       "chkAutomatik",
                                       "SPos2",
                                       "cmdAnfang2",
                                       "cmdPlay2",
                                       "cmdPause2",
                                       "cmdStop2",
                                       "Command3",
                                       "Command4",
                                       "HScroll3",
                                       "TeilerPlayer",
                                       "List1",
                                       "List2",
                                       "TeilerListen",
                                       "cmdKategorien",
                                       "Text1",
                                       "TreeView1",
                                       "TeilerKategorien",
                                       "DataGrid2",
                                       "cmdOrdnerEinlesen",
                                       "cmdSchritt1",
                                       "cmdSchritt1Anders",
                                       "cmdSchritt2",
                                       "cmdSchritt2Anders",
                                       "cmdSchritt3",
                                       "cmdErsteSchritteSchliessen",
                                       "cmdListe1",
                                       "cmdListe2",
                                       "cmdKopfhoerer",
                                       "Label5",
                                       "lstWuensche",
                                       "cmdTitelEinlesen"};

constexpr const char* kDividers[] = {"TeilerPlayer", "TeilerListen", "TeilerKategorien"};

QSlider* SliderOf(const QWidget& window, const char* name) {
    return window.findChild<QSlider*>(QLatin1String(name));
}

} // namespace

KeyCommands::KeyCommands(const Parts& parts) : QObject(&parts.window), parts_(parts) {
    AddGoing();
    AddArchive();
    AddMixer();
    QMenu& help = *parts_.actions.helpMenu;
    QAction* list = Add(help, "Tastenuebersicht", QStringLiteral("&Tastenübersicht..."),
                        QKeySequence(Qt::CTRL | Qt::Key_F1), [this] { ShowShortcuts(); });
    help.removeAction(list);
    help.insertAction(parts_.actions.about, list);
    OrderFocus();
    new MenuMnemonics(*parts_.window.menuBar());
    new ControlHints(parts_.window);
    DialogKeys::Install(*qApp);
}

KeyCommands::~KeyCommands() {
    delete shortcuts_.data();
}

template<typename Act>
QAction* KeyCommands::Add(QMenu& menu, const char* name, const QString& text, const QKeySequence& shortcut, Act act) {
    QAction* action = menu.addAction(text, this, act);
    action->setObjectName(QString::fromUtf8(name));
    action->setShortcut(shortcut);
    return action;
}

void KeyCommands::AddGoing() {
    QMenu& menu = *parts_.actions.editMenu->addMenu(QStringLiteral("&Gehe zu"));
    const auto add = [&](const char* name, const QString& text, Qt::Key key, const char* control) {
        Add(menu, name, text, QKeySequence(Qt::CTRL | Qt::ALT | key), [this, control] { GoTo(control); });
    };
    add("GeheZuListe1", QStringLiteral("Wiedergabeliste &1"), Qt::Key_1, "List1");
    add("GeheZuListe2", QStringLiteral("Wiedergabeliste &2"), Qt::Key_2, "List2");
    add("GeheZuArchiv", QStringLiteral("&Musikarchiv"), Qt::Key_3, "DataGrid2");
    add("GeheZuRegler", QStringLiteral("Ü&berblendregler"), Qt::Key_4, "SFader");
    Add(menu, "GeheZuTeiler", QStringLiteral("&Teiler der Bereiche"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_5),
        [this] { GoToDivider(); });
}

void KeyCommands::AddArchive() {
    QMenu& menu = *parts_.actions.archiveMenu;
    menu.addSeparator();
    Add(menu, "TitelProbehoeren", QStringLiteral("Titel &probehören\tEingabe"), {},
        [this] { Click(QStringLiteral("Label5")); });
    Add(menu, "Kategorien", QStringLiteral("&Kategorien zeigen oder verbergen"), QKeySequence(Qt::CTRL | Qt::Key_B),
        [this] { Click(QStringLiteral("cmdKategorien")); });
    sorting_ = menu.addMenu(QStringLiteral("S&ortieren nach"));
    sorting_->setObjectName(QStringLiteral("SortierenNach"));
    connect(sorting_, &QMenu::aboutToShow, this, &KeyCommands::FillSorting);
}

/** As a click on the head: the same column once more turns the order round. */
void KeyCommands::FillSorting() {
    sorting_->clear();
    const QList<ArchiveField> fields = parts_.archive.VisibleFields();
    for (const ArchiveField field : fields)
        sorting_->addAction(FieldCaption(field), this, [this, field] { parts_.archive.SortBy(field); });
}

void KeyCommands::AddMixer() {
    QMenu& menu = *parts_.actions.mixerMenu;
    for (const int player : {1, 2})
        AddPlayer(player);
    menu.addSeparator();
    const auto move = [this](const char* slider, int step) {
        if (QSlider* found = SliderOf(parts_.window, slider))
            found->setValue(found->value() + step);
    };
    QMenu& fading = *menu.addMenu(QStringLiteral("Überblend&regler"));
    Add(fading, "ReglerNachLinks", QStringLiteral("Etwas nach &links"),
        QKeySequence(Qt::ALT | Qt::SHIFT | Qt::Key_Left), [move] { move("SFader", -kFaderStep); });
    Add(fading, "ReglerNachRechts", QStringLiteral("Etwas nach &rechts"),
        QKeySequence(Qt::ALT | Qt::SHIFT | Qt::Key_Right), [move] { move("SFader", kFaderStep); });
    Add(fading, "ReglerMitte", QStringLiteral("In die &Mitte"), QKeySequence(Qt::ALT | Qt::SHIFT | Qt::Key_Down),
        [this] {
            if (QSlider* fader = SliderOf(parts_.window, "SFader"))
                fader->setValue(0);
        });
    Add(menu, "Lauter", QStringLiteral("La&uter"), QKeySequence(Qt::CTRL | Qt::Key_Plus),
        [move] { move("hscroll1", kVolumeStep); });
    Add(menu, "Leiser", QStringLiteral("L&eiser"), QKeySequence(Qt::CTRL | Qt::Key_Minus),
        [move] { move("hscroll1", -kVolumeStep); });
}

/** With the keys that work this player, and Shift. */
void KeyCommands::AddPlayer(int player) {
    QMenu& menu = *parts_.actions.playerMenus.at(static_cast<std::size_t>(player - 1));
    menu.addSeparator();
    const auto add = [&](const char* name, const QString& text, int key, auto act) {
        const QByteArray numbered = name + QByteArray::number(player);
        Add(menu, numbered.constData(), text,
            QKeySequence(Qt::SHIFT | static_cast<Qt::Key>(Qt::Key_F1 + 4 * (player - 1) + key)), act);
    };
    const auto skip = [this, player](double seconds) {
        auto* position = parts_.window.findChild<PositionSlider*>(QStringLiteral("SPos%1").arg(player));
        if (position != nullptr)
            position->SetSpokenNumber(position->SpokenNumber()->value + seconds);
    };
    add("PlayerAnfang", QStringLiteral("Zum Anfang oder Cue-Punkt"), 0,
        [this, player] { Click(QStringLiteral("cmdAnfang%1").arg(player)); });
    add("PlayerZurueck", QStringLiteral("5 Sekunden zurück"), 2, [skip] { skip(-kSkip); });
    add("PlayerVor", QStringLiteral("5 Sekunden vor"), 3, [skip] { skip(kSkip); });
}

void KeyCommands::OrderFocus() {
    QWidget* last = nullptr;
    for (const char* name : kFocusOrder) {
        auto* control = parts_.window.findChild<QWidget*>(QLatin1String(name));
        if (control != nullptr && last != nullptr)
            QWidget::setTabOrder(last, control);
        last = control != nullptr ? control : last;
    }
}

/** A list that a full view hides comes back. */
void KeyCommands::GoTo(const char* control) {
    auto* wanted = parts_.window.findChild<QWidget*>(QLatin1String(control));
    QAction* view = parts_.actions.fullViews->checkedAction();
    if (wanted != nullptr && !wanted->isVisible() && view != nullptr)
        view->setChecked(false);
    if (wanted != nullptr)
        wanted->setFocus(Qt::ShortcutFocusReason);
}

/** One after the other. */
void KeyCommands::GoToDivider() {
    QList<QWidget*> dividers;
    for (const char* name : kDividers) {
        auto* divider = parts_.window.findChild<QWidget*>(QLatin1String(name));
        if (divider != nullptr && divider->isVisible())
            dividers.append(divider);
    }
    const qsizetype next = dividers.indexOf(parts_.window.focusWidget()) + 1;
    if (!dividers.isEmpty())
        dividers.at(next % dividers.size())->setFocus(Qt::ShortcutFocusReason);
}

void KeyCommands::Click(const QString& button) {
    if (auto* found = parts_.window.findChild<QAbstractButton*>(button))
        found->click();
}

void KeyCommands::ShowShortcuts() {
    if (shortcuts_ == nullptr) {
        shortcuts_ = new frmTasten(ShortcutsOfMenus(*parts_.window.menuBar()) + ShortcutsOfControls(), &parts_.window);
        shortcuts_->setAttribute(Qt::WA_DeleteOnClose);
    }
    shortcuts_->show();
    shortcuts_->raise();
    shortcuts_->activateWindow();
}

} // namespace kalvo
