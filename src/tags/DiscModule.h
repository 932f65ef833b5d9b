#pragma once

#include "base/ModuleFile.h"
#include "tags/DiscDatabase.h"

namespace kalvo {

/** The disc database's module. */
class DiscModule : public ModuleFile<DiscDatabase> {
public:
    /** programFolder: the folder of the executable. */
    explicit DiscModule(const QString& programFolder)
        : ModuleFile(programFolder, QStringLiteral("CdBase.ocx"), kDiscFactoryName) {}
};

} // namespace kalvo
