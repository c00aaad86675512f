#pragma once

#include <random>
#include <string>

#include "boxlink/transfer.h"
#include "cards/card_image.h"
#include "cards/card_paths.h"
#include "settings/history.h"
#include "support/link_fixture.h"
#include "support/simulated_readers.h"

namespace kx::test {

/// All three card paths in process, on a stepped clock: one simulated reader behind both libraries, and a
/// simulated box with the sample tune and a card in its socket.
class Card_Fixture : public Link_Fixture {
 protected:
  Card_Fixture() {
    platform::seams.chipdrive = &chipdrive_;
    platform::seams.todos = &todos_;
    platform::seams.card_service = &service_;
    Reset_History();
    Reset_Cards();
    reader_.Card.Memory = As_Sent(Other_Tune());
    Box().Card_Present = true;
    Box().Socket.Card.Memory = As_Sent(Other_Tune());
  }
  ~Card_Fixture() override {
    Reset_Cards();
    EXPECT_EQ(service_.open, 0) << "a context of the card service is left open";
  }
  void TearDown() override { EXPECT_FALSE(Transfer_Running()); }

  /// A tune that differs from the sample in every byte that is not fixed, for the same dataset.
  static Byte_Image Other_Tune() {
    Byte_Image image = Sample_Tune();
    for (int i = 0; i < map::reserved_low; ++i) image[i] = static_cast<std::uint8_t>(image[i] ^ 0xB1);
    return image;
  }

  /// A tune of random bytes that makes no slave.
  Byte_Image Random_Tune() {
    Byte_Image image;
    for (int i = 0; i < Byte_Image::size; ++i) image[i] = static_cast<std::uint8_t>(random_());
    image[map::flags_a] &= 0xF7;
    image[map::mirror] = image[map::flags_c];
    return image;
  }

  /// @p image as it goes to a card.
  static Byte_Image As_Card(Byte_Image image) {
    image.Fill(map::reserved_low, map::reserved_high, 0);
    image[map::dataset] = static_cast<std::uint8_t>(DatasetID);
    image[map::card_checksum] = Card_Checksum(image);
    return image;
  }

  void Set_Reader_Faults(const std::string& knobs) {
    sim::Reader_Faults faults;
    EXPECT_EQ(sim::Parse_Reader_Faults(knobs, faults), "");
    reader_.Set_Faults(faults);
  }

  std::mt19937 random_{20310517};
  sim::Card_Reader reader_;
  Simulated_Chipdrive chipdrive_{reader_};
  Simulated_Todos todos_{reader_};
  Listed_Readers service_;
};

}  // namespace kx::test
