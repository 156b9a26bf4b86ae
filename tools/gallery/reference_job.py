"""Draws an item with gl-reference: the same GLSL, inputs and parameters, on OpenGL."""
import json

import catalog


def moved(param, way, ratio):
    """The parameter's value when the frames have come `way` from 0 to 1."""
    if param["name"] == "ratio":
        return [ratio]
    if "from" not in param:
        return param["default"]
    return [a + (b - a) * way for a, b in zip(param["from"], param["to"])]


def transition_job(item, out, frames, size):
    params = item.info["effects"][0]["params"]
    ratio = size[0] / size[1]
    job = {"kind": "transition", "size": size, "fragment": str(item.path),
           "inputs": [str(path) for path in item.pictures],
           "samplers": item.info["samplers"], "frames": []}
    for frame in range(frames):
        way = frame / (frames - 1)
        uniforms = [{"name": param["name"], "type": param["declared"],
                     "values": moved(param, way, ratio)} for param in params]
        job["frames"].append({"out": str(out) % frame, "uniforms": uniforms})
    return job


def draw(item, out, frames, size):
    """Draws `frames` pictures to the files `out`; returns what went wrong, or nothing."""
    if item.kind == "effect":
        arguments = ["--effect", item.path, "--out", out, "--size", f"{size[0]}x{size[1]}",
                     "--frames", str(frames)]
    else:
        job = out.with_name(item.key + ".json")
        job.write_text(json.dumps(transition_job(item, out, frames, size)))
        arguments = [job]
    status, _, error = catalog.run([catalog.NATIVE / "gl-reference", *arguments])
    return "" if status == 0 else error.strip() or f"exit status {status}"
