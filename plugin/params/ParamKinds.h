// The kinds of parameter. Each knows the definition that its kind hands to the host, and the form
// of its value in the settings file; what they have in common is in BaseParam.
#pragma once

#include "params/BaseParam.h"

namespace streakfall {

class ParamAddColor final : public BaseParam {
  public:
    ParamAddColor(RecordPlace place, const char* name, PF_Pixel value,
                  const PF_ParamDef& definition)
        : BaseParam(place, name, definition), default_(value) {}
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;
    void saveDefault(const PF_ParamDef& def, const char* settingsPath) const override;

  private:
    PF_Pixel default_;
};

class ParamAddSlider final : public BaseParam {
  public:
    struct Values {
        std::int32_t validMin, validMax, sliderMin, sliderMax, value;
    };
    ParamAddSlider(RecordPlace place, const char* name, const Values& values,
                   const PF_ParamDef& definition)
        : BaseParam(place, name, definition), values_(values) {}
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;
    void saveDefault(const PF_ParamDef& def, const char* settingsPath) const override;

  private:
    Values values_;
};

class ParamAddFloatSlider final : public BaseParam {
  public:
    struct Values {
        float validMin, validMax, sliderMin, sliderMax, value;
        PF_Precision precision;
        PF_ValueDisplayFlags displayFlags;
        bool phase;
    };
    ParamAddFloatSlider(RecordPlace place, const char* name, const Values& values,
                        const PF_ParamDef& definition)
        : BaseParam(place, name, definition), values_(values) {}
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;
    void saveDefault(const PF_ParamDef& def, const char* settingsPath) const override;

  private:
    Values values_;
};

class ParamAddCheckbox final : public BaseParam {
  public:
    // `text` stands beside the box; static. `flags` are added to the definition's.
    struct Values {
        const char* text;
        std::int8_t value;
        PF_ParamFlags flags;
    };
    ParamAddCheckbox(RecordPlace place, const char* name, const Values& values,
                     const PF_ParamDef& definition)
        : BaseParam(place, name, definition), values_(values) {}
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;
    void saveDefault(const PF_ParamDef& def, const char* settingsPath) const override;

  private:
    Values values_;
};

class ParamAddAngle final : public BaseParam {
  public:
    ParamAddAngle(RecordPlace place, const char* name, double degrees,
                  const PF_ParamDef& definition);
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;
    void saveDefault(const PF_ParamDef& def, const char* settingsPath) const override;

  private:
    PF_Fixed default_;
};

// Has no place in the settings file.
class ParamAddPoint final : public BaseParam {
  public:
    // 16.16 percent of the layer. Bounds that restrict keep the point inside the layer.
    struct Values {
        PF_Fixed x, y;
        bool restrictBounds;
    };
    ParamAddPoint(RecordPlace place, const char* name, const Values& values,
                  const PF_ParamDef& definition)
        : BaseParam(place, name, definition), values_(values) {}
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;

  private:
    Values values_;
};

// The start of a group.
class ParamAddTopic final : public BaseParam {
  public:
    ParamAddTopic(const char* name, const PF_ParamDef& definition)
        : BaseParam({}, name, definition) {}
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;
};

// The end of a group, which has neither a name nor flags.
class ParamEndTopic final : public BaseParam {
  public:
    ParamEndTopic() : BaseParam({}, "", {}) {}
    PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                     const char* settingsPath) const override;
};

}  // namespace streakfall
