#pragma once

#include "vector/VectorFormat.h"
#include "vector/VectorPicture.h"

namespace zyn {

/// Writes a picture to `fileName`, replacing a file of that name; where it cannot, which it throws,
/// that file stays as it is and nothing else is left.
void writeVectorFile(VectorFormat format, const VectorPicture& picture, const wchar_t* fileName);

}  // namespace zyn
