#pragma once

#include "archive/Archive.h"
#include "base/BackgroundWriter.h"
#include "base/Clock.h"
#include "base/DataFolder.h"
#include "base/RandomSource.h"
#include "base/Settings.h"
#include "live/WishList.h"
#include "playback/Mixer.h"
#include "playback/PlayCounter.h"
#include "playlists/Playlist.h"
#include "playlists/PlaylistKeeper.h"
#include "tags/clsAudioGenie.h"

namespace kalvo {

/** Everything that the main window works with, without a window: one value for the whole run. UI thread. */
struct Desk {
    /** Creates the data folders. The library is not initialised yet, nothing is opened. */
    Desk(const DataFolder& dataFolder, std::unique_ptr<audio::AudioLibrary> library);
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    Playlist& List(int player) { return player == 2 ? list2 : list1; }

    DataFolder folder;
    bool foldersCreated; ///< false: the data folder cannot be written
    SystemClock clock;
    SystemRandom random;
    Settings settings;
    BackgroundWriter writer;
    AudioLayer layer;
    Playlist list1;
    Playlist list2;
    Mixer mixer;
    PlaylistKeeper keeper;
    Archive archive;
    clsAudioGenie tags;
    ChartsFile charts;
    WishList wishes;
    EveningLog evening;
    PlayCounter counter;
};

} // namespace kalvo
