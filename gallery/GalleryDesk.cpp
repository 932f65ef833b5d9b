#include "gallery/GalleryDesk.h"

#include "app/DemoTitles.h"
#include "archive/ui/frmExplorer.h"
#include "gallery/GalleryContent.h"
#include "gallery/StageAudio.h"
#include "support/WaitUntil.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QDir>

#include <stdexcept>

namespace kalvo::gallery {

namespace {

/** The lists that tree and automatic DJ choose from. */
void BuildCategories(Desk& desk) {
    frmExplorer explorer(desk.archive, desk.folder);
    bool built = false;
    QObject::connect(&explorer, &frmExplorer::Built, &explorer, [&built] { built = true; });
    explorer.Start();
    test::WaitUntil([&built] { return built; });
}

} // namespace

GalleryDesk::GalleryDesk(Content content)
    : shownFolder_(qEnvironmentVariable("KALVO_GALERIE_ORDNER", otherFolder_.path())) {
    auto library = std::make_unique<StageAudio>();
    audio_ = library.get();
    desk_ = std::make_unique<kalvo::Desk>(DataFolder(folder_.Path(QStringLiteral("Kalvo"))), std::move(library));
    if (content == Content::Evening) {
        music_ = WriteDemoTitles(shownFolder_ + QStringLiteral("/Musik"));
        GalleryContent::WriteFiles(*desk_, music_);
    }
    window_ = std::make_unique<Form1>(*desk_, CommandLine());
    if (!window_->Load() || !test::WaitUntil([this] { return desk_->archive.IsIndexReady(); }))
        throw std::runtime_error("the main window does not load");
    if (content == Content::Evening) {
        GalleryContent::FillArchive(*desk_, music_);
        BuildCategories(*desk_);
        GalleryContent::PutOnAir(*desk_, *audio_, music_);
    }
    window_->show();
    Settle();
    QObject::connect(&guard_, &QTimer::timeout, &guard_, [this] { CloseQuestion(); });
    guard_.start(300); // ms
}

GalleryDesk::~GalleryDesk() = default;

void GalleryDesk::CloseQuestion() {
    auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr)
        return;
    unexpected_.append(box->findChild<QWidget*>(QStringLiteral("lblText"))->property("text").toString());
    box->close();
}

QAction& GalleryDesk::Action(const char* objectName) {
    auto* action = window_->findChild<QAction*>(QString::fromUtf8(objectName));
    if (action == nullptr)
        throw std::runtime_error(std::string("no such action: ") + objectName);
    return *action;
}

void GalleryDesk::ShowLook(const QString& skin, const QString& fontSize) {
    Action(("Skin" + QString(skin).remove(u' ')).toUtf8().constData()).trigger();
    Action(("Schriftgrad_" + fontSize).toUtf8().constData()).trigger();
    Settle();
}

void GalleryDesk::Settle() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QApplication::processEvents();
    }
}

} // namespace kalvo::gallery
