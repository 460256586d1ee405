#pragma once

namespace Nimbrel::Images {

/// Keeps Qt and libtiff from writing on standard error about pictures and profiles that they cannot read: for us, that
/// is one answer among others. To be called before either is asked for something; what counts is the first call.
void quietLibraries();

}  // namespace Nimbrel::Images
