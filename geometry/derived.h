// Objects derived from other objects: sectors, ribbons and spherical surfaces,
// intersection lines and loci. Their geometry arrives with their own module;
// here they take part in the document's collections, lookups and deletion.
#pragma once

#include "geometry/locus.h"
#include "geometry/position.h"

namespace vt {

class CFan : public DocObject {};
class CRibbon : public DocObject {};
class CSphere : public DocObject {};
class CInterLine : public DocObject {};

}  // namespace vt
