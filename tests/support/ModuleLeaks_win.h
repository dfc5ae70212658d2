#pragma once

namespace zyn::test {

/// Fails the test unless both DLLs, as far as they are loaded, say that nothing of them is left:
/// no object, no class object, no lock.
void expectNothingLeft();

/// Under Wine, leaves a library out of that from now on: when an object is created from the
/// multi-threaded apartment, Wine's COM keeps a reference to its class object for good.
void allowKeptClassObject(const wchar_t* library);

/// Leaves both out from now on: calls that were broken off hold what they held.
void allowLostReferences();

}  // namespace zyn::test
