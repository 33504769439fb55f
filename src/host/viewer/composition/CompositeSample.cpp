#include "CompositeSample.h"

#include "pixelview/AreaSample.h"

namespace qzview {

std::array<float, 4> CompositeSampler::At(const CompositionSnapshot& snapshot, int x, int y,
                                          int size) {
    if (size <= 1) {
        return CompositePixel(snapshot, x, y);
    }
    namespace pv = qzhost::pixelview;
    const pv::SampleSquare inside =
        pv::SquareInside(x, y, size, pv::SampleSquare{0, 0, snapshot.width, snapshot.height});
    pv::AreaMean mean(size);
    if (!inside.Empty()) {
        const PixelRect region{inside.x0, inside.y0, inside.x1, inside.y1};
        const auto count =
            static_cast<std::size_t>(region.Width()) * static_cast<std::size_t>(region.Height());
        square_.resize(count * 4);
        CompositeRegion(snapshot, region, AlphaForm::Premultiplied, square_.data(), scratch_);
        mean.AddPremultiplied(square_.data(), count);
    }
    const pv::PixelARGB argb = mean.Mean();
    return {argb[1], argb[2], argb[3], argb[0]};
}

} // namespace qzview
