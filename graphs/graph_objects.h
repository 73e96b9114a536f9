// Objects defined by formulas: function curves, surfaces, surfaces of rotation
// and extruded surfaces, as the document's collections hold them.
#pragma once

#include "geometry/position.h"
#include "graphs/funcurve.h"
#include "graphs/surface.h"
#include "graphs/swept.h"
