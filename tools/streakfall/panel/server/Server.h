// The panel on a socket of the loopback address.
#pragma once

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "Panel.h"

namespace httplib {
class Server;
}

namespace tool::panel {

class Server {
  public:
    // Port 0: any that is free. From here on requests are answered. `panel` must outlive it.
    // Throws Failure (usage) when the port is taken.
    Server(Panel& panel, int port);
    // As stop, however long it takes.
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Takes no more requests, and waits until those at work are answered. False when some still
    // are, or a browser still holds a connection, at the end of the patience.
    [[nodiscard]] bool stop(std::chrono::milliseconds patience);

  private:
    std::unique_ptr<httplib::Server> server_;
    std::thread listener_;
    std::future<void> ended_;
};

}  // namespace tool::panel
