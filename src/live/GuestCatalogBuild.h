#pragma once

#include "archive/ArchiveTask.h"
#include "live/GuestCatalog.h"

#include <QTimer>

namespace kalvo {

/**
 * Keeps a catalog of the archive for the guests: built on a thread when it is asked for, and anew a few seconds after
 * titles have changed. UI thread.
 */
class GuestCatalogBuild : public ArchiveTask {
    Q_OBJECT

public:
    using Catalog = std::shared_ptr<const GuestCatalog>;

    explicit GuestCatalogBuild(Archive& archive, QObject* parent = nullptr);

    /** Follows the archive from now on, or no longer. */
    void Follow(bool on);

Q_SIGNALS:
    void Built(const kalvo::GuestCatalogBuild::Catalog& catalog);

private:
    std::function<void(BackgroundRun&)> Prepare() override;
    void TellAbandoned(bool cancelled) override;
    void Renew();
    void Take(const Catalog& catalog);

    QTimer later_;
    bool following_ = false;
    bool changed_ = false; ///< since the running build began
};

} // namespace kalvo
