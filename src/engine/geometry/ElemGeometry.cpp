#include "engine/geometry/ElemGeometry.h"

CElemGeometry::~CElemGeometry() = default;
