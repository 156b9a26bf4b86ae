#include "render.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "console.h"
#include "interrupt.h"
#include "picture.h"
#include "raw_frames.h"
#include "session.h"
#include "tool_error.h"

namespace effect_render {
namespace {

class FrameLoop {
public:
    FrameLoop(const Options& options, const Job& job, IOpenGLEffectEngine& engine)
        : options_(options), reader_(stdin) {
        for (const EffectDescription& effect : job.effects) {
            sessions_.push_back(std::make_unique<Session>(engine, effect, job.width, job.height));
        }
        picture_.width = job.width;
        picture_.height = job.height;
        picture_.pixels.resize(static_cast<size_t>(picture_.RowPitch()) * picture_.height);
    }

    int64_t Run() {
        const int64_t total = int64_t{options_.frames.last} - options_.frames.first + 1;
        int64_t done = 0;
        while (done < total && !WasInterrupted() && NextInput()) {
            const auto frame = static_cast<int32_t>(options_.frames.first + done);
            Draw(frame);
            Write(frame);
            ++done;
            if (!options_.until_end) {
                ShowProgress(done, total);
            }
        }
        if (options_.raw_in && !WasInterrupted()) {
            TellOfShortInput(done, total);
        }
        return done;
    }

private:
    // False at the end of the input.
    bool NextInput() {
        Picture* stream = sessions_.front()->Stream();
        return stream == nullptr || reader_.Read(*stream);
    }

    void Draw(int32_t frame) {
        const std::optional<double> way = WayAt(frame, options_.span);
        const TextureNum* previous = nullptr;
        for (const auto& session : sessions_) {
            const bool is_last = session == sessions_.back();
            session->DrawFrame(way, previous, is_last ? picture_.pixels.data() : nullptr);
            previous = session->Output();
        }
    }

    void Write(int32_t frame) const {
        if (options_.raw_out) {
            WriteRawFrame(stdout, picture_);
        } else {
            SavePicture(FramePath(options_.output, frame), picture_);
        }
    }

    void TellOfShortInput(int64_t done, int64_t total) const {
        if (done == 0) {
            throw ToolError("standard input: holds no frame");
        }
        if (done < total && !options_.until_end) {
            PrintLine("effect-render: standard input ended after " + std::to_string(done) + " of " +
                      std::to_string(total) + " frames");
        }
    }

    const Options& options_;
    RawReader reader_;
    std::vector<std::unique_ptr<Session>> sessions_;  // one for each effect of the chain
    Picture picture_;                                 // the frame that was drawn last
};

}  // namespace

int64_t DrawFrames(const Options& options, const Job& job, IOpenGLEffectEngine& engine) {
    if (options.raw_in) {
        MakeBinary(stdin);
    }
    if (options.raw_out) {
        MakeBinary(stdout);
    }
    return FrameLoop(options, job, engine).Run();
}

}  // namespace effect_render
