#pragma once

#include "app/StartDecisions.h"

#include <QString>

namespace kalvo {

/** The component files beside the executable. UI thread, before the audio library is loaded. */
class ComponentFiles {
public:
    /** programFolder: of the executable. */
    explicit ComponentFiles(QString programFolder);

    /**
     * Puts a downloaded audio library in its place: "wenzo.dll" of the program folder becomes "bass.dll", then
     * "Temp/wenzo.dll" is copied over it. What fails is passed over, and the old library stays whole.
     */
    void InstallWaitingLibrary() const;

    /** version: of the loaded audio library, empty when it cannot be loaded. */
    ComponentFacts Facts(const QString& version) const;

private:
    QString Path(const char* name) const;
    bool Exists(const char* name) const;

    QString folder_;
};

} // namespace kalvo
