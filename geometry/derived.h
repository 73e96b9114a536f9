// Objects derived from other objects: sectors, ribbons and spherical surfaces
// and intersection lines (geometry/derived_surfaces.h), and loci
// (geometry/locus.h).
#pragma once

#include "geometry/derived_surfaces.h"
#include "geometry/locus.h"
#include "geometry/position.h"
