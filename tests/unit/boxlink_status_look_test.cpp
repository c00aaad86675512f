#include <gmock/gmock.h>

#include "boxlink/status_look.h"

namespace kx {
namespace {

TEST(Status_Look, Failure_And_Success_Are_Told_Apart) {
  for (const char* status :
       {"Read aborted 10:11:12", "Verify failed 10:11:12", "Verify finished and failed 10:11:12",
        "Write verify failed!", "< No responce >", "< Failed to open COM9 >", "< Error in updateing >",
        "< verify failure > 12 13", "< Slave EE not matching... >", "< Dataset ID not matched >",
        "< Card byte error >", "< communication error >", "WRITE ERROR"})
    EXPECT_EQ(Tone_Of_Status(status), Tone::failure) << status;
  for (const char* status : {"Read finished 10:11:12", "Verify finished 10:11:12", "Write finished 10:11:12",
                             "< Info received OK >", "< COM9 open >", "< KX read 10:11:12 >",
                             "< KX data verify OK >", "< Write finished, slave OK,  10:11:12... >"})
    EXPECT_EQ(Tone_Of_Status(status), Tone::success) << status;
  for (const char* status : {"< COM-Port info >", "Read started 10:11:12", "Writing... ", "< COM9 closed >",
                             "< verifying... >", "< writing data to KX... >", ""})
    EXPECT_EQ(Tone_Of_Status(status), Tone::plain) << status;
}

TEST(Status_Look, The_Ports_That_A_Test_Opened) {
  EXPECT_THAT(Ports_That_Work("Com port 1 not ok   1 - No such device\r\nCom port 9 ok\r\n"
                              "Com port 10 not ok   2 - ok\r\nCom port 40 ok\r\n"),
              testing::ElementsAre(9, 40));
  EXPECT_THAT(Ports_That_Work("12 13\r\nCom port"), testing::IsEmpty());
}

}  // namespace
}  // namespace kx
