#pragma once

#include <cstddef>
#include <string_view>

#include "core/Progress.h"
#include "toolpath/PathSink.h"

namespace zyn {

struct GCodeOptions {
  bool skipsBlocks = true;     ///< lines that begin with a slash are left out
  bool skipsUnknown = false;   ///< unknown codes are skipped and counted, else refused
  double peckRetract = 0.254;  ///< millimetres between a hole's bottom so far and the next peck
};

/// Reads a program for a mill or a printer (RS-274) and tells its motion. The answer is how many
/// unknown codes were skipped. Throws GCodeError, Aborted and what the sink throws.
///
/// With `skipsUnknown` also these are skipped: words with unknown letters (E, U, V, W), each one
/// counted; a line that begins with something other than a word; and what belongs to a skipped
/// code: all words of a line with an unknown G code, what follows an unknown M code, text too.
/// These move nothing, unless a known code of the line takes them. G4 without P, and G10 but for L2
/// and L20, are unknown codes then.
std::size_t readGCode(std::string_view text, const GCodeOptions& options, PathSink& sink,
                      const Progress& progress = {});

}  // namespace zyn
