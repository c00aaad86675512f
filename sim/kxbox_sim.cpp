// The simulated KX-box as a program: a pseudo terminal that a workbench can open like a serial port.

#include <getopt.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <csignal>
#include <iostream>
#include <optional>

#include "sim/image_file.h"
#include "sim/pty_box.h"

namespace {

using namespace kx::sim;

struct Options {
  std::string Link;
  std::string Save;
  std::string Slave_Image_File;
  Box_Contents Box;
  std::optional<std::uint8_t> Dataset;
  Faults Knobs;
  bool Fast = false;
  bool Die_With_Parent = false;
  bool Help = false;
};

/// Reads all of @p text as a number of 0 to @p most in the given base.
std::optional<std::uint32_t> Number(std::string_view text, std::uint32_t most, int base = 10) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc{} || end != text.data() + text.size() || value > most) return std::nullopt;
  return value;
}

std::string Set_Serial(Options& options, const std::string& value) {
  std::string_view text = value;
  options.Box.Serial_As_Hex = text.ends_with('h');
  if (options.Box.Serial_As_Hex) text.remove_suffix(1);
  const auto serial = options.Box.Serial_As_Hex ? Number(text, 0xFFFF, 16) : Number(text, 99999);
  options.Box.Serial = serial.value_or(0);
  return serial ? "" : "--serial wants 0 to 99999, or up to FFFF in hex with an h behind it";
}

std::string Set_Dataset(Options& options, const std::string& text) {
  const auto dataset = Number(text, 255);
  if (!dataset) return "--dataset wants 0 to 255";
  options.Dataset = static_cast<std::uint8_t>(*dataset);
  return {};
}

std::string Set_Drive(Options& options, const std::string& text) {
  const auto seed = Number(text, 0xFFFFFFFF);
  options.Box.Drive_Seed = seed.value_or(1);
  return seed ? "" : "--drive wants a whole number";
}

/// A longer text would keep the whole answer from arriving while the workbench listens.
std::string Set_Firmware(Options& options, const std::string& text) {
  if (text.size() > 100 || text.find("Master") != std::string::npos) {
    return "--firmware wants up to 100 characters without \"Master\" in them";
  }
  options.Box.Firmware = text;
  return {};
}

std::string Set_Image(Options& options, const std::string& path) {
  const Loaded_Image image = Read_Image(path);
  options.Box.Master = image.Bytes;
  return image.Error;
}

std::string Set_Faults(Options& options, const std::string& text) {
  Parsed_Faults parsed = Parse_Faults(text);
  options.Knobs = std::move(parsed.Knobs);
  return parsed.Error;
}

struct Option {
  const char* Name;
  const char* Form;  ///< Empty for an option without a value.
  const char* Help;
  std::string (*Set)(Options& options, const std::string& value);  ///< Returns what is wrong, or nothing.
};

template <auto Member>
std::string Set_Flag(Options& options, const std::string&) {
  options.*Member = true;
  return {};
}

template <auto Member>
std::string Set_In_Box(Options& options, const std::string&) {
  options.Box.*Member = true;
  return {};
}

template <auto Member>
std::string Set_Text(Options& options, const std::string& value) {
  options.*Member = value;
  return {};
}

const std::array All_Options = {
    Option{"link", "PATH", "make a symbolic link to the terminal", Set_Text<&Options::Link>},
    Option{"image", "FILE.kxs", "the tune in the box (else all zero)", Set_Image},
    Option{"slave", "", "with a slave that holds the same tune", Set_In_Box<&Box_Contents::Slave_Present>},
    Option{"slave-image", "FILE.kxs", "with a slave that holds this tune",
           Set_Text<&Options::Slave_Image_File>},
    Option{"card", "", "with a card in the socket", Set_In_Box<&Box_Contents::Card_Present>},
    Option{"dataset", "N", "dataset to report (else byte 255 of the tune, else 108)", Set_Dataset},
    Option{"firmware", "TEXT", "firmware to report", Set_Firmware},
    Option{"serial", "N", "serial number to report, 1234 or 12AFh", Set_Serial},
    Option{"drive", "N", "seed of the drive that a log tells of", Set_Drive},
    Option{"fast", "", "answer at once, not at 115200 baud", Set_Flag<&Options::Fast>},
    Option{"fault", "KNOBS", "what goes wrong, see below", Set_Faults},
    Option{"save", "FILE.kxs", "write the tune of the box there at the end", Set_Text<&Options::Save>},
    Option{"die-with-parent", "", "end when the program that started this one has ended",
           Set_Flag<&Options::Die_With_Parent>},
    Option{"help", "", "show this", Set_Flag<&Options::Help>},
};

std::string Help_Text() {
  std::string help = "kxbox_sim: a simulated KX-box on a pseudo terminal. It prints the path to open\n";
  help += "and serves it until SIGINT or SIGTERM.\n\n";
  for (const Option& option : All_Options) {
    std::string line = "  --" + std::string(option.Name) + " " + option.Form;
    line.resize(26, ' ');
    help += line + option.Help + "\n";
  }
  return help + "\nKNOBS are joined by commas, as in --fault \"drop=17,on=rd+rs\":\n" + Faults_Help();
}

/// Takes @p arguments into @p options; returns what is wrong, or an empty text.
std::string Read_Arguments(int count, char** arguments, Options& options) {
  std::array<option, All_Options.size() + 1> table{};
  for (std::size_t i = 0; i < All_Options.size(); ++i) {
    const Option& row = All_Options.at(i);
    table.at(i) = {row.Name, *row.Form != '\0' ? required_argument : no_argument, nullptr,
                   static_cast<int>(i)};
  }
  for (int found = 0; (found = getopt_long(count, arguments, "", table.data(), nullptr)) >= 0;) {
    if (found == '?') return "see --help";
    const char* value = optarg != nullptr ? optarg : "";
    std::string error = All_Options.at(static_cast<std::size_t>(found)).Set(options, value);
    if (!error.empty()) return error;
  }
  return optind < count ? "unknown argument " + std::string(arguments[optind]) : std::string();
}

/// Fills what depends on several options: the slave's tune and the dataset.
std::string Complete(Options& options) {
  constexpr std::size_t dataset_offset = 255;
  const std::uint8_t in_image = options.Box.Master[dataset_offset];
  options.Box.Dataset = options.Dataset.value_or(in_image != 0 ? in_image : options.Box.Dataset);
  options.Box.Slave = As_Slave(options.Box.Master);
  if (options.Slave_Image_File.empty()) return {};
  const Loaded_Image slave = Read_Image(options.Slave_Image_File);
  options.Box.Slave = slave.Bytes;
  options.Box.Slave_Present = true;
  return slave.Error;
}

int Fail(const std::string& text) {
  std::cerr << "kxbox_sim: " << text << "\n";
  return 1;
}

/// Serves until a signal of @p ending comes.
int Run(const Options& options, const sigset_t& ending) {
  const Pace pace = options.Fast ? Pace::At_Once : Pace::Real;
  Pty_Box box(Line(Box(options.Box), options.Knobs, pace), options.Link);
  if (const std::string error = box.Start(); !error.empty()) return Fail(error);
  std::cout << box.Path() << std::endl;
  int signal = 0;
  sigwait(&ending, &signal);
  box.Stop();
  if (options.Save.empty()) return 0;
  const Image image = box.With_Box([](const Box& held) { return held.Contents().Master; });
  const std::string error = Write_Image(options.Save, image);
  return error.empty() ? 0 : Fail(error);
}

/// False when the parent has died before the system could be asked to tell.
bool Follow_Parent(pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  return getppid() == parent;
}

}  // namespace

int main(int count, char** arguments) {
  const pid_t parent = getppid();
  Options options;
  std::string error = Read_Arguments(count, arguments, options);
  if (error.empty()) error = Complete(options);
  if (!error.empty()) return Fail(error);
  if (options.Help) return (std::cout << Help_Text()), 0;

  sigset_t ending;  // blocked before any thread starts, so that only sigwait() sees them
  sigemptyset(&ending);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ending, signal);
  pthread_sigmask(SIG_BLOCK, &ending, nullptr);
  if (options.Die_With_Parent && !Follow_Parent(parent)) return 0;
  return Run(options, ending);
}
