// For programs that call libraries which compute in the wide registers of newer processors.
#pragma once

namespace lorivan {

/// Tells the processor that the upper parts of its vector registers hold nothing. Some libraries return with
/// those in use (Qt's fills of pictures and most of its painting do), and until somebody clears them all
/// further computing of ours, which uses the lower parts, takes up to twice as long on many processors. To be
/// called where our own computing begins again; takes a few cycles. Does nothing where there are none.
void leaveWideRegisters();

}  // namespace lorivan
