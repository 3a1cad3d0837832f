#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/Ledger.h"
#include "hostapi/hostapi.h"

namespace standin {

// The handles of all hosts in the process. A handle made through one host may come back through
// another, since an effect keeps the services of its first caller; its books stay with the host
// that made it. Each handle's memory is one allocation of exactly its size, 16-byte aligned, so
// that an address sanitiser sees one byte too many. Safe from any thread.
//
// `caller` is the host asked; rules broken on handles that nobody knows go to its books.
namespace handles {

// Null when there is no memory for it.
PF_Handle create(const std::shared_ptr<Ledger>& owner, A_HandleSize size);
void* lock(PF_Handle handle, Ledger& caller);
// `moves`: memory moves when the last lock goes.
void unlock(PF_Handle handle, Ledger& caller, bool moves);
void dispose(PF_Handle handle, Ledger& caller);
A_HandleSize size(PF_Handle handle, Ledger& caller);
PF_Err resize(PF_Handle handle, A_HandleSize size, Ledger& caller);

// For the host itself, outside the books.
bool alive(PF_Handle handle);
// Keeps the memory in place during a command, as hosts do; `by` is 1 or -1. A handle that is gone
// is passed over.
void pin(PF_Handle handle, int by);
std::vector<std::uint8_t> bytes(PF_Handle handle);

}  // namespace handles

}  // namespace standin
