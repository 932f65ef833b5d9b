#include "archive/FolderScan.h"

#include <QFile>

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>
#include <vector>

namespace kalvo {

namespace {

namespace fs = std::filesystem;

/** Entries of a large folder between two calls of the progress function. */
constexpr int kEntriesBetween = 500;

QString TextOf(const fs::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

/** Whether the name is text, so that the path leads back to the file. */
bool IsText(const fs::path& path) {
    return QFile::encodeName(TextOf(path)).toStdString() == path.string();
}

class Scan {
public:
    explicit Scan(const std::function<bool(const ScanProgress&)>& progress) : progress_(progress) {}

    ScanResult Run(const QString& root, ScanMethod method) {
        const fs::path path = QFile::encodeName(root).toStdString();
        std::error_code error;
        root_ = fs::canonical(path, error);
        visited_.insert(root_);
        if (method == ScanMethod::Standard) {
            Walk(path);
        } else {
            std::vector<fs::path> folders;
            Collect(path, folders);
            for (const fs::path& folder : folders)
                TakeFiles(List(folder).files);
        }
        result_.files.append(state_.files);
        result_.validRoot = true;
        return std::move(result_);
    }

private:
    struct Listing {
        std::vector<fs::path> files;
        std::vector<fs::path> folders;
    };

    void Walk(const fs::path& folder) {
        ++state_.folders;
        const Listing listing = List(folder);
        TakeFiles(listing.files);
        for (const fs::path& below : listing.folders)
            if (!result_.cancelled && IsNew(below))
                Walk(below);
    }

    void Collect(const fs::path& folder, std::vector<fs::path>& folders) {
        ++state_.folders;
        folders.push_back(folder);
        for (const fs::path& below : List(folder, false).folders)
            if (!result_.cancelled && IsNew(below))
                Collect(below, folders);
    }

    /** Real folders always; a link only when what it leads to lies outside and has not been seen. */
    bool IsNew(const fs::path& folder) {
        std::error_code error;
        const bool link = fs::is_symlink(folder, error);
        const fs::path real = fs::canonical(folder, error);
        if (error)
            return false;
        const bool inside = std::mismatch(root_.begin(), root_.end(), real.begin(), real.end()).first == root_.end();
        return !(link && inside) && visited_.insert(real).second;
    }

    /** Sorted by the bytes of the names; reports a folder that cannot be read, once per scan. */
    Listing List(const fs::path& folder, bool report = true) {
        Listing listing;
        state_.folder = TextOf(folder);
        Tell();
        std::error_code error;
        int seen = 0;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end && !result_.cancelled;
             entry.increment(error)) {
            std::error_code unknown;
            if (entry->is_directory(unknown))
                listing.folders.push_back(entry->path());
            else if (entry->is_regular_file(unknown))
                listing.files.push_back(entry->path());
            if (++seen % kEntriesBetween == 0)
                Tell();
        }
        if (error && report)
            result_.passedOver.append({state_.folder, QStringLiteral("Der Ordner kann nicht gelesen werden.")});
        std::sort(listing.files.begin(), listing.files.end());
        std::sort(listing.folders.begin(), listing.folders.end());
        return listing;
    }

    void TakeFiles(const std::vector<fs::path>& files) {
        for (const fs::path& file : files) {
            if (!IsMusicFileName(TextOf(file.filename())))
                continue;
            if (IsText(file))
                state_.files.append(TextOf(file));
            else
                result_.passedOver.append({TextOf(file), QStringLiteral("Der Dateiname ist kein gültiger Text.")});
        }
    }

    void Tell() {
        if (!result_.cancelled && progress_ && !progress_(state_))
            result_.cancelled = true;
        result_.files.append(std::exchange(state_.files, {}));
    }

    const std::function<bool(const ScanProgress&)>& progress_;
    fs::path root_; ///< without links
    std::set<fs::path> visited_;
    ScanProgress state_;
    ScanResult result_;
};

} // namespace

bool IsScanRoot(const QString& folder) {
    if (!folder.startsWith(u'/') || folder.startsWith(QStringLiteral("//")))
        return false;
    std::error_code error;
    return fs::is_directory(QFile::encodeName(folder).toStdString(), error);
}

bool IsMusicFileName(const QString& name) {
    const QString ending = name.right(4).toLower();
    return ending == QStringLiteral(".mp3") || ending == QStringLiteral(".ogg");
}

ScanResult ScanFolder(const QString& root, ScanMethod method,
                      const std::function<bool(const ScanProgress&)>& progress) {
    return IsScanRoot(root) ? Scan(progress).Run(root, method) : ScanResult();
}

} // namespace kalvo
