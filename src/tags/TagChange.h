#pragma once

#include "tags/TagData.h"

namespace TagLib {
namespace ID3v2 {
class Tag;
}
namespace Ogg {
class XiphComment;
}
} // namespace TagLib

namespace kalvo {

/** One change of an ID3v2 tag, or of the Ogg comments that correspond to it. */
struct TagChange {
    enum class Kind {
        SetText,      ///< frame, comment.text; an empty text removes the frame
        AddComment,   ///< replaces the one of the same description; an empty text removes it
        AddLyric,     ///< comment
        AddPicture,   ///< picture
        DeleteFrames, ///< all of this frame
    };
    Kind kind = Kind::SetText;
    quint32 frame = 0;
    TagComment comment = {};
    TagPicture picture = {};
};

/** The same change in what was read, in a tag and in Ogg comments. */
void Apply(const TagChange& change, TagData& data);
void Apply(const TagChange& change, TagLib::ID3v2::Tag& tag);
void Apply(const TagChange& change, TagLib::Ogg::XiphComment& comments);

} // namespace kalvo
