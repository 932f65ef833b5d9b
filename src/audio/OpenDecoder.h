#pragma once

#include "audio/Decoder.h"

namespace kalvo::audio {

class ReadAheadFile;

/**
 * The decoder that fits the file's first bytes, whatever its name says; tags and zero padding before the sound are
 * passed over. Null when no sound can be decoded. The file is open and must outlive the decoder. With LengthNeed::Soon
 * the format may be an estimate.
 */
std::unique_ptr<Decoder> OpenDecoder(ReadAheadFile& file, LengthNeed need = LengthNeed::Exact);

} // namespace kalvo::audio
