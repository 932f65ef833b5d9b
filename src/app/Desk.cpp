#include "app/Desk.h"

namespace kalvo {

Desk::Desk(const DataFolder& dataFolder, std::unique_ptr<audio::AudioLibrary> library)
    : folder(dataFolder),
      foldersCreated(folder.CreateAll()),
      settings(folder.Path(QStringLiteral("\\kalvo.ini"))),
      layer(std::move(library)),
      list1(1, random),
      list2(2, random),
      mixer(layer, list1, list2),
      keeper(list1, list2, folder.Path(QStringLiteral("\\Wiedergabeliste\\default.mav")), clock,
             [this] { writer.Flush(); }), // the journal first: it must never be the older of the two
      archive(clock),
      charts(folder.Path(QStringLiteral("\\Charts")), clock),
      wishes(folder.Path(QStringLiteral("\\WZ")), clock),
      evening(folder.Path(QStringLiteral("\\Verlauf"))),
      counter(mixer, list1, list2, {charts, evening, archive}, clock) {}

} // namespace kalvo
