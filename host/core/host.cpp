#include "core/host.h"

namespace host {

Host& Host::Current() {
  static Host host;
  return host;
}

}  // namespace host
