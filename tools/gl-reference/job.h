#pragma once

#include <string>
#include <vector>

namespace reference {

/// One uniform of a frame.
struct Uniform {
    std::string name;
    std::string type;           // int bool float vec2 ... ivec2 ... mat4
    std::vector<float> values;  // as many as the type has elements, matrices column by column
};

/// One picture to draw.
struct Frame {
    std::string out;  // PNG file to write
    std::vector<Uniform> uniforms;
};

/// One transition and the frames to draw of it.
///
/// The job file is JSON: `{"size": [W, H], "fragment": FILE, "inputs": [FILE...], "samplers":
/// [NAME...], "frames": [{"out": FILE, "uniforms": [{"name": N, "type": T, "values": [...]}]}]}`.
/// `samplers` may be left out.
struct Job {
    int width = 0;  // pixels
    int height = 0;
    std::string fragment;               // GLSL text, read from the file that the job names
    std::vector<std::string> inputs;    // picture files
    std::vector<std::string> samplers;  // the transition's own: they read inputs 3, 4, ...
    std::vector<Frame> frames;
};

/// Reads a job file and the shader file it names.
///
/// @throws std::runtime_error with a message that names the file and what is wrong in it
Job read_job(const std::string& path);

}  // namespace reference
