#pragma once

#include "playback/FileStamp.h"

#include <map>
#include <string>
#include <utility>

namespace kalvo {

/** Exact lengths of titles, each file read once until it changes. One thread at a time; waits for the disk. */
class LengthCache {
public:
    /** Seconds; 0 when the file cannot be played. */
    double Of(const std::string& path);

private:
    std::map<std::string, std::pair<FileStamp, double>> known_;
};

} // namespace kalvo
