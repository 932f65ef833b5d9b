#include "app/StartFolder.h"

namespace kalvo {

StartFolder::StartFolder(const CommandLine& line) : data_(DataFolder::Personal()) {
    if (line.demonstration) {
        temporary_.emplace();
    }
    if (!line.dataFolder.isEmpty()) {
        data_ = DataFolder(line.dataFolder);
    } else if (temporary_) {
        data_ = DataFolder(temporary_->filePath(QStringLiteral("Kalvo")));
    }
}

} // namespace kalvo
