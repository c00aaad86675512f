#include "platform/readers/pcsc_service.h"

#include <algorithm>
#include <cstddef>

// Behind the standard headers: it brings short type names of its own.
#ifdef _WIN32
#include <windows.h>
#endif
#include <winscard.h>
#ifdef _WIN32
#undef SCardListReaders  // a macro there, which would rename our member
#endif

namespace kx::platform {
namespace {

constexpr std::size_t usual_list_size = 255;

/// @p size in: room in @p names; out: what the service needs or has filled.
LONG List(SCARDCONTEXT context, std::string& names, DWORD& size) {
  names.assign(size, '\0');
#ifdef _WIN32
  return ::SCardListReadersA(context, nullptr, names.data(), &size);
#else
  return ::SCardListReaders(context, nullptr, names.data(), &size);
#endif
}

}  // namespace

long Pcsc_Service::SCardEstablishContext(Card_Context& context) {
  SCARDCONTEXT made = 0;
  const LONG status = ::SCardEstablishContext(SCARD_SCOPE_USER, nullptr, nullptr, &made);
  context = static_cast<Card_Context>(made);
  return status;
}

long Pcsc_Service::SCardListReaders(Card_Context context, std::string& names) {
  const auto of_service = static_cast<SCARDCONTEXT>(context);
  DWORD size = usual_list_size;
  LONG status = List(of_service, names, size);
  if (status == SCARD_E_INSUFFICIENT_BUFFER) status = List(of_service, names, size);
  names.resize(status == SCARD_S_SUCCESS ? std::min<std::size_t>(size, names.size()) : 0);
  return status;
}

long Pcsc_Service::SCardReleaseContext(Card_Context context) {
  return ::SCardReleaseContext(static_cast<SCARDCONTEXT>(context));
}

}  // namespace kx::platform
