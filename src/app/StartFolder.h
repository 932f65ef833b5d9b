#pragma once

#include "app/CommandLine.h"
#include "base/DataFolder.h"

#include <QString>
#include <QTemporaryDir>

#include <optional>

namespace kalvo {

/** Where a run keeps its data: the folder of the command line, a temporary one for the demonstration, the personal. */
class StartFolder {
public:
    explicit StartFolder(const CommandLine& line);

    const DataFolder& Data() const { return data_; }
    /** For the demonstration's own titles; only with a demonstration. */
    QString DemoMusic() const { return temporary_->filePath(QStringLiteral("Musik")); }

private:
    std::optional<QTemporaryDir> temporary_;
    DataFolder data_;
};

} // namespace kalvo
