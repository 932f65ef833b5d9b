#pragma once

#include "app/CommandLine.h"
#include "app/DeskActions.h"
#include "app/DeskQuestions.h"
#include "app/WindowValues.h"
#include "playlists/PlaylistIntake.h"
#include "widgets/LayoutMode.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

namespace kalvo {

struct Desk;
class ArchiveCommands;
class ArchivePanel;
class ConsolePanel;
class EqualizerCommand;
class FirstStepsCommands;
class KeySplitter;
class ListBand;
class ListCommands;
class MeasureCommands;
class NoticeBar;
class OptionCommands;
class MetaOutput;
class SessionMemory;
class StatusLine;
class TagCommands;
class UndoCommands;
class WatchCommands;
class frmTitelEinlesen;

/**
 * The main window: console, lists and archive in three bands, joined with the desk. Holds the timers that drive the
 * players and the settings that the window itself changes.
 */
class Form1 : public QMainWindow {
    Q_OBJECT

public:
    /** The desk outlives the window. */
    Form1(Desk& desk, const CommandLine& commandLine, QWidget* parent = nullptr);
    ~Form1() override;

    /** Reads the settings, opens output, archive and lists. False after a fatal failure, which has been told. */
    bool Load();
    /** Imports these titles, fills both lists with them and plays. */
    void Demonstrate(const QStringList& titles);
    /** Files at the end of the active list. */
    void AddFiles(const QStringList& files);
    /** Saves and ends without a question. */
    void End();
    /** On top of the other windows, if the desktop lets it. */
    void ComeForward();

Q_SIGNALS:
    /** What Load() is doing, for the splash. */
    void LoadProgress(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Build();
    void BuildBands();
    void BuildCommands();
    void BuildLiveTools();
    void BuildHelpers();
    void ConnectMixer();
    void ConnectMixing();
    void ConnectArchive();
    void ConnectActions();
    void ConnectSettings();
    void StartTimers();

    void ShowProgress(const QString& text);
    void SetBasics();
    bool InitOutput();
    void CheckScreen();
    void ReadMixer();
    void OpenArchive();
    void RestoreLists();
    void ApplyStyle();
    void ShowStyle(const QString& skin, const QString& fontSize, const QString& buttonSize);
    void PlaceWindow();
    /** size: of the window, in logical pixels. */
    void FoldLayout(const QSize& size);
    void ShowOptions();
    void ShowOutput();
    void FillDeviceMenu();
    void ChooseDevice(int device);
    template<typename Change>
    void ChangeOptions(Change change);
    void ImportTitles();
    void AskForFiles();
    void AddSelectedTitles(int player);
    /** False: the lists could not be saved. */
    bool Save();
    void FocusSearch();
    void ShowAbout();

    Desk& desk_;
    CommandLine commandLine_;
    WindowValues values_;
    DeskActions actions_;
    DeskQuestions questions_;
    PlaylistActions listActions_;
    PlaylistIntake intake_;
    NoticeBar* notice_ = nullptr;
    KeySplitter* bands_ = nullptr;
    ConsolePanel* console_ = nullptr;
    ListBand* lists_ = nullptr;
    ArchivePanel* archive_ = nullptr;
    ArchiveCommands* archiveCommands_ = nullptr;
    StatusLine* status_ = nullptr;
    EqualizerCommand* equalizer_ = nullptr;
    OptionCommands* options_ = nullptr;
    TagCommands* tags_ = nullptr;
    MeasureCommands* measures_ = nullptr;
    WatchCommands* watch_ = nullptr;
    UndoCommands* undo_ = nullptr;
    ListCommands* listCommands_ = nullptr;
    FirstStepsCommands* firstSteps_ = nullptr;
    MetaOutput* meta_ = nullptr;
    SessionMemory* session_ = nullptr;
    QPointer<frmTitelEinlesen> import_;
    QTimer* timer1_;  ///< hand-over, 100 ms
    QTimer* timeDj_;  ///< fade, interval = fade speed
    QTimer* seconds_; ///< times of the lists and what else changes by the second
    LayoutMode mode_ = LayoutMode::Normal;
    bool closing_ = false;
};

} // namespace kalvo
