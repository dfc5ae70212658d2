#include "gcode/GCodeReader.h"

#include "core/ProgressMeter.h"
#include "gcode/Block.h"
#include "gcode/BlockReader.h"
#include "gcode/Interpreter.h"
#include "gcode/Parameters.h"
#include "gcode/ProgramText.h"

namespace zyn {

namespace {

/// Passes over the slash that begins a line, with the number of its switch; false where there is
/// none.
bool passSlash(ProgramText& text) {
  if (!text.passIf('/')) {
    return false;
  }
  if (isDigit(text.peek())) {
    text.pass();
  }
  return true;
}

}  // namespace

/// A line that begins with % ends the program if words or another % came before.
std::size_t readGCode(std::string_view bytes, const GCodeOptions& options, PathSink& sink,
                      const Progress& progress) {
  ProgramText text(bytes);
  Parameters parameters;
  std::size_t skipped = 0;
  BlockReader reader(text, parameters, options.skipsUnknown, skipped);
  Interpreter interpreter(text, options, parameters, sink, skipped);
  ProgressMeter meter(progress, bytes.size());
  Block block;
  bool hasBegun = false;
  while (!interpreter.hasEnded() && text.nextLine()) {
    meter.reached(text.offset());
    if (text.peek() == '%') {
      if (hasBegun) {
        break;
      }
      hasBegun = true;
    } else if (!passSlash(text) || !options.skipsBlocks) {
      reader.read(block);
      interpreter.execute(block);
      hasBegun = hasBegun || block.words || block.groups;
    }
  }
  meter.reached(bytes.size());
  return skipped;
}

}  // namespace zyn
