#include <AnimUtil/LeastSquares/FitEffort.h>

namespace Qel::LeastSquares {

void FitEffort::AddLooks(std::uint64_t count) {
    looks += count;
    if (looks > most) throw TooMuchEffort("the curve fitter looks at samples too often");
}

}  // namespace Qel::LeastSquares
