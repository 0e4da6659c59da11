#pragma once

namespace pelta {

/// For tests of the web port: whether maps made from now on draw each layer of the model as one layer of GL
/// JS, in place of merging neighbours into one. Off at first. Looks the same, and takes time that grows with
/// the square of the number of layers. Main thread only.
void setDrawsLayersLiterally(bool isLiteral);

}  // namespace pelta
