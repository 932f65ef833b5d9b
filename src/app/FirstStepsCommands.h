#pragma once

#include "app/FirstStepsImport.h"
#include "app/FirstStepsState.h"

#include <QObject>

class QWidget;

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class FirstStepsPanel;
class PlaylistIntake;

/** The guide of the first start in the archive's place, and "Erste Schritte" in the help menu that brings it back. */
class FirstStepsCommands : public QObject {
    Q_OBJECT

public:
    /** All outlive the commands. */
    struct Parts {
        Desk& desk;
        DeskActions& actions;
        PlaylistIntake& intake;
        ArchivePanel& archive;
        QWidget& window;
    };

    explicit FirstStepsCommands(const Parts& parts);
    ~FirstStepsCommands() override;

    /** Shows the guide where there is nothing yet and it was not closed for good. */
    void OfferAtStart();

Q_SIGNALS:
    /** For the status line. */
    void Told(const QString& text);
    /** This folder is being imported. */
    void FolderChosen(const QString& folder);

private:
    void ShowGuide();
    void Hide();
    void CloseForGood();
    void Choose(int step, bool other);
    void ChooseMusic(bool other);
    void AskForFolder();
    void Import(const QString& folder);
    void FillLists();
    void LookForMusic();
    void TakeCount();
    void Refresh();

    Parts parts_;
    FirstStepsPanel* panel_;
    FirstStepsImport import_;
    std::shared_ptr<BackgroundRun> look_; ///< for music in the suggested folder
    FirstStepsState state_;
};

} // namespace kalvo
