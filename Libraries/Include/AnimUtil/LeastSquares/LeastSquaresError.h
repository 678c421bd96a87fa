#pragma once

#include <QelTools/Exception.h>

namespace Qel::LeastSquares {

/// What the curve fitter throws: a text and nothing else.
class Error : public QelTools::Common::TextException {
  public:
    using QelTools::Common::TextException::TextException;
};

}  // namespace Qel::LeastSquares
