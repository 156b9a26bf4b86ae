#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "host/fake_host.h"

namespace trust {

/// A host without a plan: operations of the effect interface in random order with arguments that
/// are good, odd, or plainly wrong. The same seed gives the same calls.
class RandomHost {
public:
    /// @param draws_unindexed  may draw by indices where no list of them is bound. Wine's own
    /// device
    ///                         reads through null then; the fake device and Windows do not.
    RandomHost(IOpenGLEffectEngine* engine, uint32_t seed, bool draws_unindexed = true);

    /// Makes the effect that the calls go to, with some inputs and parameters.
    bool create();
    /// Makes one call. Whatever it gives is right, as long as nothing breaks.
    void step();
    void release() { effect_.reset(); }
    const std::string& lastCall() const { return last_; }
    /// How many draws gave a picture so far.
    int pictures() const { return pictures_; }

private:
    using Step = void (RandomHost::*)();
    struct Row;
    static const std::vector<Row>& steps();

    int pick(int below) { return static_cast<int>(random_() % static_cast<uint32_t>(below)); }
    bool chance(int percent) { return pick(100) < percent; }
    int32_t number();
    int32_t index();
    uint32_t side();
    const char* name();
    const void* data();
    std::vector<int32_t> numbers(int longest);
    VertexAttribute attribute();
    InputTexture picture();

    void drawStep();
    void initStep();
    void resizeStep();
    void textStep();
    void registerStep();
    void setStep();
    void arrayStep();
    void perPassStep();
    void inputStep();
    void pictureStep();
    void pictureListStep();
    void handleStep();
    void audioStep();
    void vertexStep();
    void vertexListStep();
    void countStep();
    void stateStep();
    void targetStep();
    void programStep();
    void variantStep();
    void readStep();
    void taskStep();

    IOpenGLEffectEngine* engine_;
    std::mt19937 random_;
    const bool draws_unindexed_;
    host::Effect effect_;
    std::string last_;
    int pictures_ = 0;
    int inputs_ = 0;
    std::vector<uint8_t> memory_ = std::vector<uint8_t>(1 << 20, 3);
    std::vector<uint8_t> result_ = std::vector<uint8_t>(1 << 20);
};

}  // namespace trust
