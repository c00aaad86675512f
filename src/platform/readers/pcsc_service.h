#pragma once

#include "platform/card_libraries.h"

namespace kx::platform {

/// The card service of the system: pcsc-lite, or Winscard on Windows. The program starts and runs without
/// the service; each call asks anew.
class Pcsc_Service : public Card_Service {
 public:
  long SCardEstablishContext(Card_Context& context) override;
  long SCardListReaders(Card_Context context, std::string& names) override;
  long SCardReleaseContext(Card_Context context) override;
};

}  // namespace kx::platform
