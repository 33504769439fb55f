// The match names of the properties that the host names for plug-ins.
#include "host/PXM_StreamNames.h"

namespace {

const KVB_MatchName kMaskShape("MASK_SHAPE");

} // namespace

const KVB_MatchName* const OM_StreamNamePtr_MASK_SHAPE = &kMaskShape;

const KVB_MatchName PXM_StreamName_PAINT_SHAPE("PAINT_SHAPE");
const KVB_MatchName PXM_StreamName_MASK_OPACITY("MASK_OPACITY");
const KVB_MatchName PXM_StreamName_MASK_FEATHER("MASK_FEATHER");
const KVB_MatchName PXM_StreamName_MASK_OFFSET("MASK_OFFSET");
const KVB_MatchName PXM_StreamName_ANCHOR_POINT("ANCHOR_POINT");
const KVB_MatchName PXM_StreamName_POSITION("POSITION");
const KVB_MatchName PXM_StreamName_SCALE("SCALE");
const KVB_MatchName PXM_StreamName_ORIENTATION("ORIENTATION");
const KVB_MatchName PXM_StreamName_ROTATE_X("ROTATE_X");
const KVB_MatchName PXM_StreamName_ROTATE_Y("ROTATE_Y");
const KVB_MatchName PXM_StreamName_ROTATE_Z("ROTATE_Z");
const KVB_MatchName PXM_StreamName_OPACITY("OPACITY");
const KVB_MatchName PXM_StreamName_AUDIO_LEVELS("AUDIO_LEVELS");
