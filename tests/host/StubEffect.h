#pragma once

#include <functional>
#include <map>

#include "host/FrameRender.h"
#include "host/Module.h"

// What an effect of the test's own is called with.
struct StubCall {
    PF_InData* in;
    PF_OutData* out;
    PF_ParamDef** params;
    PF_LayerDef* output;
    void* extra;

    template <class Extra>
    Extra& extraAs() const {
        return *static_cast<Extra*>(extra);
    }
    // A suite, acquired; null when it is not to be had.
    template <class Suite>
    const Suite* suite(const char* name, A_long version) const {
        const void* table = nullptr;
        in->pica_basicP->AcquireSuite(name, version, &table);
        return static_cast<const Suite*>(table);
    }
};

// An effect whose commands are written in the test. On its own it adds a point, a group with a
// stepping slider, keeps 8 bytes of sequence data, plans what the input gives, and paints all of
// the output with the first byte 42. One at a time, since an entry point is a plain function.
class StubEffect {
  public:
    using Action = std::function<PF_Err(const StubCall&)>;

    enum : A_long { kPoint = 7, kGroup = 8, kSlider = 9, kGroupEnd = 10 };

    StubEffect();
    ~StubEffect();

    // In place of what the stub does on its own.
    void on(PF_Cmd command, Action action) { actions_[command] = std::move(action); }
    // The stub's own way, for actions that do more.
    static PF_Err usual(PF_Cmd command, const StubCall& call);

    standin::Module& module() { return module_; }

  private:
    static PF_Err entry(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params,
                        PF_LayerDef* output, void* extra);

    std::map<PF_Cmd, Action> actions_;
    standin::Module module_;
};
