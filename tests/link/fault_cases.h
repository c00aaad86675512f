#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Every fault of line and box at every stage of every transfer, as cases that a test tries one by one.
namespace kx::test {

enum class Aim { read, verify, write };

/// One of the transfers, with or without a slave behind the box.
struct Transfer {
  std::string name;
  void (*click)();
  Aim aim;
  bool timer_driven;
  bool slave;
};

/// Both engines, all aims, without and with a slave.
[[nodiscard]] std::vector<Transfer> All_Transfers();

/// What a case must come to. For most it is open: a byte that is lost may be one that nobody needs.
enum class Outcome {
  open,
  good,         ///< as without a fault
  no_image,     ///< the awaited image never comes
  not_written,  ///< the box reports another dataset than the tune's
};

struct Fault_Case {
  std::string knobs;    ///< faults of the simulated box
  std::string waiting;  ///< stale text in the port, left open for it, before the click
  Outcome outcome;
  bool differs;  ///< the box holds another tune; always so for reads and writes
  bool accept;   ///< the user's answer to questions
};

/// The cases of @p transfer; what is random in them follows from @p seed.
[[nodiscard]] std::vector<Fault_Case> Fault_Cases(const Transfer& transfer, std::uint32_t seed);

}  // namespace kx::test
