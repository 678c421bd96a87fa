#include "ProxyTransport.h"

namespace {

ProxyTransportMaker makerInUse = nullptr;

}  // namespace

std::unique_ptr<ProxyTransport> MakeProxyTransport() {
    return makerInUse != nullptr ? makerInUse() : nullptr;
}

void SetProxyTransportMaker(ProxyTransportMaker maker) {
    makerInUse = maker;
}
