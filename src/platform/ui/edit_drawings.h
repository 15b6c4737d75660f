// The drawings of an editor's tool bar. Used inside this folder only.

#pragma once

#include <QPainterPath>

#include "platform/ui/look.h"

namespace qbx {

/// Draws into a square of 24 by 24; draws nothing for the drawings of other places.
void DrawEditing(Drawing drawing, QPainterPath& path);

}  // namespace qbx
