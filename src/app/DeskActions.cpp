#include "app/DeskActions.h"

#include "playback/CrossFader.h"
#include "widgets/Skin.h"

#include <QMenuBar>

namespace kalvo {

DeskActions::DeskActions(QObject* parent) : QObject(parent) {
    addFiles = Add(QStringLiteral("MusikdateienHinzufuegen"),
                   QStringLiteral("&Musikdateien zur Wiedergabeliste hinzufügen..."), QKeySequence::Open);
    quit = Add(QStringLiteral("Beenden"), QStringLiteral("&Beenden"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    focusSearch = Add(QStringLiteral("Schnellsuche"), QStringLiteral("&Schnellsuche\tStrg+F"));
    CreateArchiveActions();
    CreateListActions();
    CreateMixerActions();
    CreateSettingActions();
    fullViews = new QActionGroup(this);
    fullViews->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    about = Add(QStringLiteral("UeberKalvo"), QStringLiteral("Ü&ber Kalvo"));
}

DeskActions::~DeskActions() = default;

QAction* DeskActions::Add(const QString& name, const QString& text, const QKeySequence& shortcut) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    action->setAutoRepeat(false);
    return action;
}

QAction* DeskActions::AddChoice(QActionGroup& group, const QString& name, const QString& text, const QVariant& value) {
    QAction* action = Add(name, text);
    action->setCheckable(true);
    action->setData(value);
    group.addAction(action);
    return action;
}

void DeskActions::CreateArchiveActions() {
    importTitles = Add(QStringLiteral("TitelZumMusikarchivHinzufügen"),
                       QStringLiteral("Titel zum Musikarchiv &hinzufügen..."), QKeySequence(Qt::CTRL | Qt::Key_I));
    selectAllTitles = Add(QStringLiteral("MAAlleTitelAuswaehlen"), QStringLiteral("&Alle Titel auswählen"));
    for (const int player : {1, 2}) {
        addToPlayer.at(static_cast<std::size_t>(player - 1)) =
            Add(QStringLiteral("TitelzumPlayer%1hinzufuegen").arg(player),
                QStringLiteral("Titel zum Player &%1 hinzufügen").arg(player),
                QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + player)));
    }
    distribute = Add(QStringLiteral("TitelAufBeidePlayerVerteilen"),
                     QStringLiteral("Titel auf beide Player &verteilen"), QKeySequence(Qt::CTRL | Qt::Key_3));
}

void DeskActions::CreateListActions() {
    for (const int player : {1, 2}) {
        moveToList.at(static_cast<std::size_t>(player - 1)) =
            Add(QStringLiteral("TitelzurWL%1hinzufuegen").arg(player),
                QStringLiteral("Markierte Titel in Wiedergabeliste &%1 verschieben").arg(player),
                QKeySequence(Qt::CTRL | Qt::SHIFT | static_cast<Qt::Key>(Qt::Key_0 + player)));
    }
    playNext = Add(QStringLiteral("TitelAlsNaechstes1"), QStringLiteral("Als &nächsten Titel spielen"),
                   QKeySequence(Qt::CTRL | Qt::Key_N));
    playNextRemoved = Add(QStringLiteral("TitelAlsNaechstes2"), QStringLiteral("&Nicht als nächsten Titel spielen"));
    shuffle = Add(QStringLiteral("Shuffle"), QStringLiteral("&Shuffle"));
    removeMarked = Add(QStringLiteral("MarkiertenTitelAusWiedergabelisteLoeschen"),
                       QStringLiteral("&Markierte Titel aus Wiedergabeliste löschen\tEntf"));
    removeAll = Add(QStringLiteral("AlleTitelAusWiedergabelisteLoeschen"),
                    QStringLiteral("&Alle Titel aus Wiedergabeliste löschen..."));
}

void DeskActions::CreateMixerActions() {
    for (const int player : {1, 2}) {
        const auto index = static_cast<std::size_t>(player - 1);
        const auto key = [player](int offset) {
            return QKeySequence(static_cast<Qt::Key>(Qt::Key_F1 + 4 * (player - 1) + offset));
        };
        const auto add = [this, player](const char* name, const QString& text, const QKeySequence& shortcut = {}) {
            return Add(QLatin1String(name) + QString::number(player), text, shortcut);
        };
        play.at(index) = add("PlayerWiedergabe", QStringLiteral("&Wiedergabe"), key(0));
        stop.at(index) = add("PlayerStop", QStringLiteral("&Stop"), key(1));
        pause.at(index) = add("PlayerPause", QStringLiteral("&Pause"), key(2));
        next.at(index) = add("PlayerNaechster", QStringLiteral("&Nächster Titel"), key(3));
        mute.at(index) = add("PlayerStumm", QStringLiteral("S&tumm"),
                             QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + player)));
        fadeTo.at(index) = add("UeberblendenZu", QStringLiteral("Überblenden zu Player %1").arg(player),
                               QKeySequence(Qt::ALT | (player == 1 ? Qt::Key_Left : Qt::Key_Right)));
    }
    modes = new QActionGroup(this);
    for (const QString& mode : {QStringLiteral("No Fading"), QStringLiteral("Fade-CrossOver")}) {
        AddChoice(*modes, QStringLiteral("Ueberblendmodus") + QString(mode).remove(u' ').remove(u'-'), mode, mode);
    }
    speeds = new QActionGroup(this);
    for (const FadeSpeed& speed : kFadeSpeeds) {
        AddChoice(*speeds, QLatin1String(speed.action), QString::fromUtf16(speed.text), speed.interval);
    }
    continuous = Add(QStringLiteral("KontinuierlicheWiedergabe"), QStringLiteral("&Kontinuierliche Wiedergabe"));
    automatic = Add(QStringLiteral("Mixerautomatik"), QStringLiteral("Mixer&automatik"));
    continuous->setCheckable(true);
    automatic->setCheckable(true);
}

void DeskActions::CreateSettingActions() {
    removePlayed =
        Add(QStringLiteral("GespielteLoeschen"), QStringLiteral("&Gespielte Titel aus der Wiedergabeliste löschen"));
    removePlayed->setCheckable(true);
    skins = new QActionGroup(this);
    for (const QString& name : Skins::Names()) {
        AddChoice(*skins, QStringLiteral("Skin") + QString(name).remove(u' '), name, name);
    }
    fontSizes = new QActionGroup(this);
    for (const QString& size : {QStringLiteral("klein"), QStringLiteral("mittel"), QStringLiteral("groß")}) {
        AddChoice(*fontSizes, QStringLiteral("Schriftgrad_") + size, size, size);
    }
    buttonSizes = new QActionGroup(this);
    AddChoice(*buttonSizes, QStringLiteral("Buttongroesse_klein"), QStringLiteral("klein"), QStringLiteral("klein"));
    AddChoice(*buttonSizes, QStringLiteral("Buttongroesse_gross"), QStringLiteral("groß"), QStringLiteral("gross"));
}

void DeskActions::BuildMenus(QMenuBar& bar) {
    fileMenu = bar.addMenu(QStringLiteral("&Datei"));
    fileMenu->addAction(addFiles);
    fileMenu->addSeparator();
    fileMenu->addAction(quit);

    editMenu = bar.addMenu(QStringLiteral("&Bearbeiten"));
    editMenu->addActions({focusSearch, selectAllTitles});

    archiveMenu = bar.addMenu(QStringLiteral("M&usikarchiv"));
    archiveMenu->addAction(importTitles);
    archiveMenu->addSeparator();
    archiveMenu->addActions({addToPlayer[0], addToPlayer[1], distribute});

    listMenu = bar.addMenu(QStringLiteral("&Wiedergabeliste"));
    listMenu->addActions({moveToList[0], moveToList[1]});
    listMenu->addSeparator();
    listMenu->addActions({playNext, playNextRemoved, shuffle});
    listMenu->addSeparator();
    listMenu->addActions({removeMarked, removeAll});

    BuildMixerMenu(bar);
    toolsMenu = bar.addMenu(QStringLiteral("Werk&zeuge"));
    BuildSettingsMenu(bar);
    helpMenu = bar.addMenu(QStringLiteral("&Hilfe"));
    helpMenu->addAction(about);
}

void DeskActions::BuildMixerMenu(QMenuBar& bar) {
    mixerMenu = bar.addMenu(QStringLiteral("&Mixer"));
    for (const std::size_t index : {0U, 1U}) {
        playerMenus[index] = mixerMenu->addMenu(QStringLiteral("Player &%1").arg(index + 1));
        playerMenus[index]->addActions({play[index], stop[index], pause[index], next[index], mute[index]});
    }
    mixerMenu->addSeparator();
    mixerMenu->addActions({fadeTo[0], fadeTo[1]});
    mixerMenu->addMenu(QStringLiteral("Überblend&modus"))->addActions(modes->actions());
    speedMenu_ = std::make_unique<QMenu>(QStringLiteral("Überblend&geschwindigkeit"));
    speedMenu_->setObjectName(QStringLiteral("ueberblendgeschwindigkeit"));
    speedMenu_->addActions(speeds->actions());
    mixerMenu->addMenu(speedMenu_.get());
    mixerMenu->addSeparator();
    mixerMenu->addActions({continuous, automatic});
}

void DeskActions::BuildSettingsMenu(QMenuBar& bar) {
    settingsMenu = bar.addMenu(QStringLiteral("&Einstellungen"));
    deviceMenu_ = std::make_unique<QMenu>(QStringLiteral("Sound&karte"));
    deviceMenu_->setObjectName(QStringLiteral("Soundkarte"));
    settingsMenu->addMenu(deviceMenu_.get());
    settingsMenu->addAction(removePlayed);
    settingsMenu->addSeparator();
    settingsMenu->addMenu(QStringLiteral("&Skin"))->addActions(skins->actions());
    settingsMenu->addMenu(QStringLiteral("Schrift&grad"))->addActions(fontSizes->actions());
    settingsMenu->addMenu(QStringLiteral("&Buttongröße"))->addActions(buttonSizes->actions());
}

} // namespace kalvo
