#include "modular/ScoreTrace.h"

#include "modular/SentiOrientedPositionWeighter.h"

namespace vortm {
namespace modular {

void startTrace(ScoreTrace& trace, std::vector<analyzer::Token>& tokens, IPositionWeighter* weighter,
                std::vector<std::string>& reasons) {
  trace.detailed = true;
  trace.tokenCount = tokens.size();
  std::vector<double> scratch;
  auto* oriented = dynamic_cast<SentiOrientedPositionWeighter*>(weighter);
  if (oriented) oriented->weightingWithReasons(tokens, scratch, &reasons);
}

}  // namespace modular
}  // namespace vortm
