// The match names of the layer and mask properties that the host names for plug-ins. Their
// texts are the names themselves ("POSITION", "MASK_OPACITY"...). The mask shape's name
// belongs to the object model, which publishes it through a pointer.
//
// [any-thread] Every constant may be read from any thread once the host is loaded.
#pragma once

#include "host/KVB_MatchName.h"
#include "qzgp/QZ_Basic.h"

/// Points to the name "MASK_SHAPE" of a mask's shape.
extern QZ_HOST_API const KVB_MatchName* const OM_StreamNamePtr_MASK_SHAPE;

extern QZ_HOST_API const KVB_MatchName PXM_StreamName_PAINT_SHAPE;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_MASK_OPACITY;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_MASK_FEATHER;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_MASK_OFFSET;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_ANCHOR_POINT;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_POSITION;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_SCALE;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_ORIENTATION;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_ROTATE_X;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_ROTATE_Y;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_ROTATE_Z;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_OPACITY;
extern QZ_HOST_API const KVB_MatchName PXM_StreamName_AUDIO_LEVELS;
