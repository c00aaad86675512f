#include "cards/card_session.h"

#include "boxlink/transfer.h"

namespace kx {

void Run_Card_Operation(void (*operation)(), const std::function<void(std::string_view)>& end_early) {
  Run_Transfer({.end_early = end_early}, operation);
}

}  // namespace kx
