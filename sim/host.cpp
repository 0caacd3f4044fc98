#include "host.h"

#include <stdexcept>

namespace ponsim
{

Host::Host(const HostOptions &options, const Access &access)
    : store(options.state, options.fresh),
      model(store, options.wanted, options.scenario),
      clock(model.olt().now(), options.speed),
      service(model, clock, access, options.socket_dir, options.socket_mode, options.record)
{
    if (!service.serving()) throw std::runtime_error("cannot serve on " + options.socket_dir);
}

void Host::stop()
{
    service.stop();
    model.advance(clock.now());
    model.keep_time();
    service.tell();
}

} // namespace ponsim
