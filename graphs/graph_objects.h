// Objects defined by formulas: function curves, surfaces, surfaces of rotation
// and extruded surfaces. Sampling and drawing arrive with the graph modules;
// here they take part in the document's collections, lookups and deletion.
#pragma once

#include "geometry/position.h"
#include "graphs/funcurve.h"
#include "graphs/surface.h"

namespace vt {

class CSurRot : public DocObject {};
class CStretch : public DocObject {};

}  // namespace vt
