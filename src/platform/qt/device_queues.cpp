#include "platform/qt/device_queues.h"

#ifdef __linux__
#include <sys/ioctl.h>
#include <termios.h>

#include <chrono>
#include <thread>
#endif

namespace kx::platform {

#ifdef __linux__
int Waiting_In_Device(int descriptor) {
  int waiting = 0;
  return ioctl(descriptor, FIONREAD, &waiting) == 0 ? waiting : 0;
}

/// The system would wait without end for a device that takes nothing any more.
void Let_Out(int descriptor) {
  constexpr std::chrono::milliseconds pause{1};
  constexpr int most_pauses = 100;  // of which the largest output at 115200 baud needs half
  int waiting = 0;
  for (int i = 0; ioctl(descriptor, TIOCOUTQ, &waiting) == 0 && waiting > 0 && i < most_pauses; ++i)
    std::this_thread::sleep_for(pause);
  (void)(waiting > 0 ? tcflush(descriptor, TCOFLUSH) : tcdrain(descriptor));
}
#else
int Waiting_In_Device(int) { return 0; }

void Let_Out(int) {}
#endif

}  // namespace kx::platform
