#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kalvo {

/**
 * Asks whether many files are there, on a thread for each further core. The thread that adds the paths lends a hand
 * when the others fall behind. Used by one thread.
 */
class MissingFiles {
public:
    MissingFiles();
    /** Waits for the files being asked for; the rest is dropped. */
    ~MissingFiles();
    MissingFiles(const MissingFiles&) = delete;
    MissingFiles& operator=(const MissingFiles&) = delete;

    /** Those of a folder should come one after the other; see FilePresence. */
    void Add(std::vector<std::string> paths);
    /** Waits for the answers; they stand in the order of the paths. Once. */
    std::vector<bool> Finish();

private:
    struct Piece {
        std::vector<std::string> paths;
        std::vector<bool> missing;
    };

    void Work();
    void AskNext(std::unique_lock<std::mutex>& lock);
    void Close();

    std::mutex mutex_; ///< guards all below but the threads and the piece that somebody asks for
    std::condition_variable changed_;
    std::deque<Piece> pieces_;
    std::size_t begun_ = 0;
    bool closed_ = false;
    std::vector<std::thread> workers_;
};

} // namespace kalvo
