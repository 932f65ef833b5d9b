#pragma once

#include "gallery/GalleryDesk.h"

#include <functional>
#include <vector>

class QWidget;

namespace kalvo::gallery {

/** name: of the window, with what it shows behind a hyphen where it shows several things: "frmOptionen-Stil". */
using GalleryVisit = std::function<void(const QString& name, QWidget& window)>;

/** One of the program's windows. */
struct GalleryWindow {
    const char* className;
    /** Opens it filled, hands it to the visitor, once for each of its pages, and closes it. */
    std::function<void(GalleryDesk& desk, const GalleryVisit& visit)> show;
};

/** All windows, in the order of the menus; the main window first. */
const std::vector<GalleryWindow>& GalleryWindows();

/** The menus of the main window, "Menue-Datei" and so on. */
void VisitMenus(GalleryDesk& desk, const GalleryVisit& visit);
/** Questions and messages of the program, the longest and the shortest of each kind. */
void VisitMessages(GalleryDesk& desk, const GalleryVisit& visit);

} // namespace kalvo::gallery
