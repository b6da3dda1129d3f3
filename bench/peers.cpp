#include "peers.h"

#include <utility>

namespace pagescan::bench {

std::vector<Peer>& peers() {
  static std::vector<Peer> installed;
  return installed;
}

PeerRegistration::PeerRegistration(Peer peer) {
  peers().push_back(std::move(peer));
}

}  // namespace pagescan::bench
