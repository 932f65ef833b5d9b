#pragma once

#include "app/StartDecisions.h"

#include <QString>

#include <functional>

namespace kalvo {

class DataFolder;

/** Shows the download dialog for a component, "wenzo" or "CDDB"; true when it was fetched. */
using ComponentDownload = std::function<bool(const QString& component)>;

/** Tells a fault and, where it can be mended, asks for the download. The program ends afterwards in any case. */
void TellComponentFault(const ComponentFault& fault, const ComponentDownload& download);

/**
 * The start option dialog. True: the main program goes on. False: it was closed, or the separate player program has
 * been started in this one's place.
 */
bool ChooseProgram(const DataFolder& folder);

} // namespace kalvo
