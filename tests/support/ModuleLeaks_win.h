#pragma once

namespace zyn::test {

/// Fails the test unless both DLLs, as far as they are loaded, say that nothing of them is left:
/// no object, no class object, no lock.
void expectNothingLeft();

}  // namespace zyn::test
