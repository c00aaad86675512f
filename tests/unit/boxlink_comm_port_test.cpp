#include "boxlink/comm_port.h"

#include "boxlink/protocol.h"
#include "settings/failure.h"
#include "support/link_fixture.h"

namespace kx {
namespace {

using platform::Line_Event;
using testing::ElementsAre;

class Comm_Port_Object : public test::Link_Fixture {
 protected:
  Comm_Port_Object() {
    port_.answer = nullptr;
    port_.deliver = nullptr;
    MSComm1.Set_CommPort(9);
    MSComm1.OnComm = [this] { events_.push_back(MSComm1.CommEvent()); };
    EXPECT_TRUE(MSComm1.Set_PortOpen(true).Ok());
  }
  std::vector<int> events_;
};

TEST_F(Comm_Port_Object, Takes_At_Most_Input_Len_And_Resets_It_On_Opening) {
  MSComm1.InputLen = 4;
  port_.Arrive(std::string("ab\0\xFFxyz", 7));
  EXPECT_EQ(MSComm1.InBufferCount(), 7);
  EXPECT_EQ(MSComm1.Input(), std::string("ab\0\xFF", 4));
  EXPECT_EQ(MSComm1.Input(), "xyz");
  EXPECT_EQ(MSComm1.Input(), "");
  MSComm1.RThreshold = 130;
  MSComm1.Set_PortOpen(false);
  MSComm1.Set_PortOpen(true);
  EXPECT_EQ(MSComm1.InputLen, 0);
  EXPECT_EQ(MSComm1.RThreshold, 0);
}

TEST_F(Comm_Port_Object, Keeps_16384_Characters) {
  port_.Arrive(std::string(16380, 'a') + "bcdefgh");
  EXPECT_EQ(MSComm1.InBufferCount(), 16384);
  EXPECT_EQ(MSComm1.Input().substr(16380), "bcde");
  port_.Arrive("after");
  EXPECT_EQ(MSComm1.Input(), "after");
}

TEST_F(Comm_Port_Object, Reports_Arrival_From_The_Threshold_On) {
  port_.Arrive("no threshold");
  EXPECT_THAT(events_, ElementsAre());
  (void)MSComm1.Input();
  MSComm1.RThreshold = 3;
  port_.Arrive("ab");
  EXPECT_THAT(events_, ElementsAre());
  port_.Arrive("c");
  port_.Arrive("");
  EXPECT_THAT(events_, ElementsAre(2));
  port_.Arrive("d");
  EXPECT_THAT(events_, ElementsAre(2, 2));
}

TEST_F(Comm_Port_Object, One_Communication_Box_At_A_Time) {
  MSComm1.OnComm = MSComm1_OnComm;
  MSComm1.RThreshold = 1;
  port_.Arrive("data is no error");
  const std::string text = "Communication error. Check connection and power.";
  ask_.Expect(text, platform::Answer::ok, [this] { port_.on_event(Line_Event::framing); });
  port_.on_event(Line_Event::parity);
  EXPECT_EQ(ask_.last_box.icon, platform::Icon::critical);
  ask_.Expect(text);
  port_.on_event(Line_Event::parity);
}

TEST_F(Comm_Port_Object, Reports_Line_Errors_By_Their_Codes) {
  for (const Line_Event error :
       {Line_Event::break_signal, Line_Event::framing, Line_Event::overrun, Line_Event::parity})
    port_.on_event(error);
  EXPECT_THAT(events_, ElementsAre(1001, 1004, 1006, 1009));
}

TEST_F(Comm_Port_Object, A_Lost_Device_Closes_The_Port_And_Fails_Every_Use) {
  port_.Arrive("last words");
  port_.Lose();
  EXPECT_FALSE(MSComm1.PortOpen());
  EXPECT_EQ(MSComm1.Input(), "last words");
  EXPECT_THROW((void)MSComm1.Input(), Failure);
  EXPECT_THROW((void)MSComm1.InBufferCount(), Failure);
  EXPECT_THROW(MSComm1.Output("v"), Failure);
  EXPECT_TRUE(MSComm1.Set_PortOpen(true).Ok());
  EXPECT_EQ(MSComm1.Input(), "");
  EXPECT_FALSE(MSComm1.Lost());
}

TEST_F(Comm_Port_Object, A_Closed_Port_Is_Quiet) {
  MSComm1.Set_PortOpen(false);
  MSComm1.Output("v");
  EXPECT_EQ(MSComm1.Input(), "");
  EXPECT_EQ(MSComm1.InBufferCount(), 0);
  EXPECT_THAT(port_.writes, ElementsAre());
}

TEST_F(Comm_Port_Object, Only_One_Kind_Of_Line_Opens) {
  MSComm1.Set_PortOpen(false);
  MSComm1.Set_Settings("9600,e,7,2");
  EXPECT_EQ(MSComm1.Set_PortOpen(true).number, 7);
  MSComm1.Set_Settings("115200,n,8,1");
  EXPECT_TRUE(MSComm1.Set_PortOpen(true).Ok());
}

}  // namespace
}  // namespace kx
