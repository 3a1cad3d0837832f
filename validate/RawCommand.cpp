#include "validate/RawCommand.h"

namespace validate {

using namespace standin;

RawCommand::RawCommand(Instance& instance)
    : Command(instance.host(), &instance), instance_(instance) {
    instance.describeTo(*this);
}

PF_Err RawCommand::send(PF_Cmd command, A_long changedIndex) {
    ParamArray params(instance_, host().global().numParams, {in.current_time, in.time_scale}, {});
    PF_LayerDef output{};
    PF_UserChangedParamExtra extra{changedIndex};
    return run(command, params.pointers(), &output,
               command == PF_Cmd_USER_CHANGED_PARAM ? &extra : nullptr);
}

PF_Err setUpSecondSequence(Instance& instance) {
    RawCommand setup(instance);
    setup.in.sequence_data = setup.out.sequence_data = nullptr;
    const PF_Err code = setup.send(PF_Cmd_SEQUENCE_SETUP);
    RawCommand setdown(instance);
    setdown.in.sequence_data = setdown.out.sequence_data = setup.out.sequence_data;
    setdown.send(PF_Cmd_SEQUENCE_SETDOWN);
    return code;
}

}  // namespace validate
