#pragma once

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <string>

namespace Qel::LeastSquares {

/// The text of the fitter's own error that leaves `act`.
template <class Act>
std::string TextOf(Act act) {
    try {
        act();
    } catch (const Error& error) {
        return error.what();
    }
    return "nothing thrown";
}

}  // namespace Qel::LeastSquares
