#include "params/ParamTable.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>

#include "params/HostQuestions.h"
#include "params/ParamKinds.h"
#include "params/Settings.h"

namespace streakfall {

namespace {

constexpr bool idsAreUniqueAndInRange() {
    std::array<bool, kParamIdLimit> taken{};
    for (const ParamRow& row : kParamRows) {
        if (row.id < 0 || row.id >= static_cast<std::int32_t>(kParamIdLimit)) return false;
        if (taken[static_cast<std::size_t>(row.id)]) return false;
        taken[static_cast<std::size_t>(row.id)] = true;
    }
    return true;
}

// Only a group's end has no name; the host's field has room for 31 characters.
constexpr bool namesFit() {
    return std::ranges::all_of(kParamRows, [](const ParamRow& row) {
        const std::string_view name = row.name;
        return name.size() <= 31 && name.empty() == (row.type == PF_Param_GROUP_END);
    });
}

constexpr bool contains(Range outer, double value) {
    return outer.min <= value && value <= outer.max;
}
constexpr bool isExactInSinglePrecision(double value) {
    return static_cast<double>(static_cast<float>(value)) == value;
}
constexpr bool rangesNest() {
    return std::ranges::all_of(kParamRows, [](const ParamRow& row) {
        if (row.type != PF_Param_SLIDER && row.type != PF_Param_FLOAT_SLIDER) return true;
        return contains(row.valid, row.slider.min) && contains(row.valid, row.slider.max) &&
               row.slider.min < row.slider.max && contains(row.valid, row.x) &&
               std::ranges::all_of(
                   std::array{row.valid.min, row.valid.max, row.slider.min, row.slider.max, row.x},
                   isExactInSinglePrecision);
    });
}

// The bytes that a kind's value takes at the front of the host's union.
constexpr std::int32_t valueSize(PF_ParamType type) {
    switch (type) {
        case PF_Param_POINT:
        case PF_Param_FLOAT_SLIDER:
            return 8;
        case PF_Param_SLIDER:
        case PF_Param_COLOR:
        case PF_Param_ANGLE:
            return 4;
        case PF_Param_CHECKBOX:
            return 1;
        default:
            return 0;
    }
}
constexpr bool fieldsMatchKinds() {
    std::array<bool, sizeof(EffectParams)> taken{};
    for (const ParamRow& row : kParamRows) {
        if (row.place.size != valueSize(row.type)) return false;
        for (std::int32_t i = 0; i < row.place.size; ++i) {
            bool& byte = taken[static_cast<std::size_t>(row.place.offset + i)];
            if (byte) return false;
            byte = true;
        }
    }
    return true;
}

constexpr std::size_t settingsKeyCount() {
    std::size_t count = 0;
    for (const ParamRow& row : kParamRows) count += row.settingsKeys();
    return count;
}

static_assert(kParamCount == 62);
static_assert(std::ranges::count_if(kParamRows,
                                    [](const ParamRow& row) { return row.place.size != 0; }) == 50);
static_assert(settingsKeyCount() == 51);
static_assert(idsAreUniqueAndInRange());
static_assert(namesFit());
static_assert(rangesNest());
static_assert(fieldsMatchKinds());

}  // namespace

constinit std::array<BaseParam*, kParamIdLimit> paramRegistry{};
constinit std::array<BaseParam*, kParamIdLimit + 1> paramsByIndex{};
constinit std::int32_t paramCounter = 1;

namespace {

// In the module operator new can give nothing instead of throwing.
template <class Param, class... Arguments>
BaseParam* newParam(const Arguments&... arguments) {
    BaseParam* param = new Param(arguments...);
    if (param == nullptr) throw std::bad_alloc();
    return param;
}

BaseParam* makeParam(const ParamRow& row, const PF_ParamDef& definition) {
    const auto whole = [](double value) { return static_cast<std::int32_t>(value); };
    const auto single = [](double value) { return static_cast<float>(value); };
    switch (row.type) {
        case PF_Param_POINT:
            return newParam<ParamAddPoint>(
                row.place, row.name,
                ParamAddPoint::Values{whole(row.x) * 65536, whole(row.y) * 65536, false},
                definition);
        case PF_Param_CHECKBOX:
            return newParam<ParamAddCheckbox>(
                row.place, row.name,
                ParamAddCheckbox::Values{"", static_cast<std::int8_t>(row.x), 0}, definition);
        case PF_Param_COLOR:
            return newParam<ParamAddColor>(row.place, row.name, PF_Pixel{PF_MAX_CHAN8, 0, 0, 0},
                                           definition);
        case PF_Param_ANGLE:
            return newParam<ParamAddAngle>(row.place, row.name, row.x, definition);
        case PF_Param_SLIDER:
            return newParam<ParamAddSlider>(
                row.place, row.name,
                ParamAddSlider::Values{whole(row.valid.min), whole(row.valid.max),
                                       whole(row.slider.min), whole(row.slider.max), whole(row.x)},
                definition);
        case PF_Param_FLOAT_SLIDER:
            return newParam<ParamAddFloatSlider>(
                row.place, row.name,
                ParamAddFloatSlider::Values{single(row.valid.min), single(row.valid.max),
                                            single(row.slider.min), single(row.slider.max),
                                            single(row.x), PF_Precision_TENTHS, row.display, false},
                definition);
        case PF_Param_GROUP_START:
            return newParam<ParamAddTopic>(row.name, definition);
        default:
            return newParam<ParamEndTopic>();
    }
}

void makeParams(PF_ParamDef definition) {
    for (const ParamRow& row : kParamRows) {
        definition.flags = PF_ParamFlag_START_COLLAPSED | row.flags;
        paramRegistry[static_cast<std::size_t>(row.id)] = makeParam(row, definition);
    }
}

void destroyParams() {
    for (BaseParam*& param : paramRegistry) {
        delete param;
        param = nullptr;
    }
    paramsByIndex.fill(nullptr);
}

// By host index, with the empty slots behind.
bool comesBefore(const BaseParam* a, const BaseParam* b) {
    return a != nullptr && (b == nullptr || a->hostIndex() < b->hostIndex());
}

// Ends at the first error. A null path means the built-in defaults.
PF_Err addAllToHost(const PF_InData* inData, const char* path) {
    const auto end =
        std::min<std::size_t>(static_cast<std::size_t>(paramCounter), paramsByIndex.size());
    for (std::size_t i = 1; i < end && paramsByIndex[i] != nullptr; ++i) {
        const PF_Err error = paramsByIndex[i]->addToHost(inData, paramsByIndex[i]->paramId(), path);
        if (error != PF_Err_NONE) return error;
    }
    return PF_Err_NONE;
}

}  // namespace

void buildParamTable(const PF_InData* inData) {
    destroyParams();
    PF_ParamDef definition{};
    if (isRenderEngine(inData)) definition.ui_flags = PF_PUI_DISABLED;
    try {
        makeParams(definition);
    } catch (...) {
        destroyParamTable();
        throw;
    }
    for (std::size_t id = 0; id < paramRegistry.size(); ++id) {
        BaseParam* param = paramRegistry[id];
        if (param != nullptr) param->paramId_ = static_cast<std::int32_t>(id);
        paramsByIndex[id + 1] = param;
    }
    std::sort(paramsByIndex.begin() + 1, paramsByIndex.end(), comesBefore);
}

void destroyParamTable() {
    destroyParams();
    paramCounter = 1;
}

PF_ParamIndex hostIndexOf(std::int32_t paramId) {
    const BaseParam* param = paramRegistry[static_cast<std::size_t>(paramId)];
    return param != nullptr ? param->hostIndex() : 0;
}

PF_Err paramsSetup(const PF_InData* inData, PF_OutData* outData) {
    std::string path;
    if (isOldHost(inData)) {
        dropSettingsSection();
    } else {
        path = settingsPath(inData);
        useSettingsSection();
    }
    const PF_Err error = addAllToHost(inData, path.empty() ? nullptr : path.c_str());
    outData->num_params = paramCounter;
    return error;
}

}  // namespace streakfall
