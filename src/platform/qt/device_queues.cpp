#include "platform/qt/device_queues.h"

#ifdef __linux__
#include <sys/ioctl.h>
#include <termios.h>
#endif

namespace kx::platform {

#ifdef __linux__
int Waiting_In_Device(int descriptor) {
  int waiting = 0;
  return ioctl(descriptor, FIONREAD, &waiting) == 0 ? waiting : 0;
}

void Let_Out(int descriptor) { (void)tcdrain(descriptor); }
#else
int Waiting_In_Device(int) { return 0; }

void Let_Out(int) {}
#endif

}  // namespace kx::platform
