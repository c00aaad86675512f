#include "cards/card_paths.h"

namespace kx {

void Reset_Cards() {
  Reset_Chipdrive();
  Reset_Todos();
  Reset_Box_Card();
}

}  // namespace kx
