#include "link/fault_cases.h"

#include <random>
#include <string_view>

#include "boxlink/sync_engine.h"
#include "boxlink/timer_engine.h"

namespace kx::test {
namespace {

/// A command that a transfer sends, how often the box answers it, and how many characters an answer has.
struct Stage {
  const char* command;
  int answers;
  int length;
};

std::vector<Stage> Sync_Stages(Aim aim, bool slave) {
  if (aim == Aim::read) return {{"v", 1, 108}, {"rd", 1, 520}};
  std::vector<Stage> stages{{"v", 2, 108}, {"rd", 1, 520}};
  if (slave) stages.push_back({"rs", 1, 520});
  if (aim == Aim::verify) return stages;
  for (Stage& stage : stages) stage.answers *= 2;
  stages.insert(stages.end(), {{"bw", 2, 3}, {"digit", 6, 1}, {"$", 2, 3}, {"ue", 3, 3}});
  return stages;
}

std::vector<Stage> Timer_Stages(Aim aim, bool slave) {
  if (aim == Aim::read) return {{"v", 1, 108}, {"rd", 1, 520}};
  if (aim == Aim::verify) return {{"v", 1, 108}, {"rd", 1, 520}, {"ue", 1, 3}};
  if (!slave)
    return {{"v", 3, 108}, {"rd", 2, 520}, {"bw", 4, 3}, {"digit", 18, 1}, {"$", 4, 3}, {"ue", 2, 3}};
  return {{"v", 4, 108}, {"rd", 2, 520}, {"rs", 3, 520},   {"bw", 4, 3},
          {"bs", 2, 3},  {"$", 6, 3},    {"digit", 26, 1}, {"ue", 4, 3}};
}

/// Characters that a transfer sends when all goes well, about.
int Sent(const Transfer& transfer) {
  if (transfer.aim == Aim::read) return 3;
  if (transfer.aim == Aim::verify) return 6;
  return transfer.slave ? 70 : 50;
}

class Case_Maker {
 public:
  Case_Maker(const Transfer& transfer, std::uint32_t seed) : transfer_(transfer), random_(seed) {}

  std::vector<Fault_Case> Make() {
    Add("", "", Outcome::good);
    const auto stages = (transfer_.timer_driven ? Timer_Stages : Sync_Stages)(transfer_.aim, transfer_.slave);
    for (const Stage& stage : stages)
      for (int answer = 1; answer <= stage.answers; ++answer) At_Answer(stage, answer);
    for (int part = 0; part < 8; ++part) At_Sent_Character(part, 8);
    for (const char* text : {"xyz", "$", "!\r\n", "mode\r\n"}) Add("", text, Outcome::good);
    Add("", std::string(600, '7'), Outcome::good);
    return std::move(cases_);
  }

 private:
  int Pick(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }
  std::string Number(int least, int most) { return std::to_string(Pick(least, most)); }

  void Add(const std::string& knobs, const std::string& waiting = "", Outcome outcome = Outcome::open) {
    const bool differs = transfer_.aim != Aim::verify || Pick(0, 1) == 1;
    cases_.push_back({knobs, waiting, outcome, differs, Pick(0, 1) == 1});
  }

  void At_Answer(const Stage& stage, int answer) {
    const bool info = stage.command == std::string_view("v");
    const bool image = stage.length == 520;
    const Outcome missing = image && transfer_.aim != Aim::write ? Outcome::no_image : Outcome::open;
    const Outcome garnished = transfer_.aim == Aim::read && image ? Outcome::good : Outcome::open;
    const std::string from = std::string("on=") + stage.command + ",from=" + std::to_string(answer) + ",";
    const std::string once = from + "times=1,";
    const std::string any_byte = Number(1, stage.length);
    Add(once + "hang_up=" + Number(0, stage.length - 1), "", missing);
    Add(once + "refuse", "", missing);
    Add(once + "drop=" + any_byte);
    Add(once + "duplicate=" + any_byte);
    Add(once + "corrupt=" + any_byte + ",seed=" + Number(0, 1 << 20));
    Add(once + "delay=0.0" + Number(10, 99));
    Add(once + "delay=" + Number(1, 3) + "." + Number(1, 9), "", missing);
    Add(once + "twice", "", garnished);
    Add(once + "single", "", Outcome::good);
    Add(once + "burst");
    Add(once + "stale=" + (Pick(0, 1) == 1 ? "\r\n" : "noise#"), "", garnished);
    Add(from + "delay=0.0" + Number(10, 30) + ",single");
    if (info)
      Add(from + "dataset=" + Number(0, 107), "",
          answer <= First_Telling_Info() ? Foreign_Box() : Outcome::open);
    // Many, because few of them give a pair that stands for no byte.
    for (int i = 0; image && i < 8; ++i) {
      Add(once + "corrupt=" + Number(6, 517) + ",seed=" + Number(0, 1 << 20));
    }
  }

  /// The first query whose answer a timer-driven write goes by: its check for a slave asks, too, when none
  /// answers.
  [[nodiscard]] int First_Telling_Info() const { return transfer_.slave ? 1 : 2; }

  [[nodiscard]] Outcome Foreign_Box() const {
    return transfer_.aim == Aim::write && transfer_.timer_driven ? Outcome::not_written : Outcome::open;
  }

  /// Faults that strike when so much has been sent, in the @p part of @p parts.
  void At_Sent_Character(int part, int parts) {
    const int sent = Sent(transfer_);
    const std::string at = Number(sent * part / parts, sent * (part + 1) / parts);
    for (const char* knob :
         {"stall=", "hang_up_received=", "drop_received=", "duplicate_received=", "corrupt_received="}) {
      Add(knob + at);
    }
    if (transfer_.slave) Add("slave_lost=" + at);
  }

  const Transfer& transfer_;
  std::mt19937 random_;
  std::vector<Fault_Case> cases_;
};

}  // namespace

std::vector<Transfer> All_Transfers() {
  std::vector<Transfer> transfers;
  for (const bool slave : {false, true}) {
    const std::string end = slave ? "_With_Slave" : "";
    transfers.insert(transfers.end(), {{"Read" + end, Read_Settings_Click, Aim::read, false, slave},
                                       {"Verify" + end, Verify_Settings_Click, Aim::verify, false, slave},
                                       {"Write" + end, Write_Settings_Click, Aim::write, false, slave},
                                       {"Read_Old" + end, Com_knapp5_Click, Aim::read, true, slave},
                                       {"Verify_Old" + end, Com_knapp4_Click, Aim::verify, true, slave},
                                       {"Write_Old" + end, Com_knapp3_Click, Aim::write, true, slave}});
  }
  return transfers;
}

std::vector<Fault_Case> Fault_Cases(const Transfer& transfer, std::uint32_t seed) {
  return Case_Maker(transfer, seed).Make();
}

}  // namespace kx::test
