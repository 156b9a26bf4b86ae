#include "job.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

namespace reference {

namespace {

std::string read_text(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error(path + ": cannot be read");
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

Frame read_frame(const nlohmann::json& json) {
    Frame frame;
    frame.out = json.at("out").get<std::string>();
    for (const auto& uniform : json.value("uniforms", nlohmann::json::array())) {
        frame.uniforms.push_back({uniform.at("name").get<std::string>(),
                                  uniform.at("type").get<std::string>(),
                                  uniform.at("values").get<std::vector<float>>()});
    }
    return frame;
}

Job read_fields(const nlohmann::json& json) {
    Job job;
    job.width = json.at("size").at(0).get<int>();
    job.height = json.at("size").at(1).get<int>();
    job.fragment = read_text(json.at("fragment").get<std::string>());
    job.inputs = json.value("inputs", std::vector<std::string>());
    job.samplers = json.value("samplers", std::vector<std::string>());
    for (const auto& frame : json.at("frames")) {
        job.frames.push_back(read_frame(frame));
    }
    return job;
}

}  // namespace

Job read_job(const std::string& path) {
    try {
        Job job = read_fields(nlohmann::json::parse(read_text(path)));
        if (job.width < 1 || job.height < 1 || job.width > 16384 || job.height > 16384) {
            throw std::runtime_error("size must lie between 1x1 and 16384x16384");
        }
        return job;
    } catch (const std::exception& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

}  // namespace reference
