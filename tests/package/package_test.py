#!/usr/bin/env python3
"""Installs the package and uses nothing else: the README's host, the tools, the samples.

package_test.py CMAKE COMPILER SOURCE_FOLDER BUILD_FOLDER [LAUNCHER]    LAUNCHER runs programs
"""
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CMAKE, COMPILER = sys.argv[1:3]
SOURCE, BUILD = Path(sys.argv[3]), Path(sys.argv[4])
LAUNCHER = sys.argv[5:]

LINKING_HOST = """
#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"
int main() {
    const auto status = CreateNLEOpenGLEffectEngineInstance(nullptr, nullptr, true, nullptr);
    return static_cast<uint32_t>(status) == 0x80004003u ? 7 : 1;
}
"""


def call(*command, **options):
    result = subprocess.run([str(c) for c in command], stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, timeout=300, **options)
    return result.returncode, result.stdout.decode().replace("\r\n", "\n")


def checked(*command, **options):
    status, output = call(*command, **options)
    if status != 0:
        raise AssertionError(f"{command}: status {status}\n{output}")
    return output


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        # Installed at one place and taken at another, as a zip is.
        checked(CMAKE, "--install", BUILD, "--strip", "--prefix", cls.folder / "made here")
        cls.package = cls.folder / "taken there"
        (cls.folder / "made here").rename(cls.package)

    def lay_compiler_beside(self, folder):
        """The HLSL compiler is the platform's; this machine has it in the build folder."""
        shutil.copy(BUILD / "bin/d3dcompiler_47.dll", folder)

    def block(self, language):
        """The one block of this language in the README."""
        blocks = re.findall(rf"```{language}\n(.*?)```", (self.package / "README.md").read_text(),
                            re.S)
        self.assertEqual(len(blocks), 1, language)
        return blocks[0]

    def build_host(self, name, files):
        source = self.folder / name
        source.mkdir()
        for file, text in files.items():
            (source / file).write_text(text)
        checked(CMAKE, "-G", "Ninja", "-S", source, "-B", source / "build",
                "-DCMAKE_SYSTEM_NAME=Windows", f"-DCMAKE_CXX_COMPILER={COMPILER}",
                f"-DCMAKE_PREFIX_PATH={self.package}")
        checked(CMAKE, "--build", source / "build")
        self.assertNotIn(str(SOURCE), (source / "build/build.ninja").read_text())
        self.lay_compiler_beside(source / "build")
        return source / "build"

    def test_everything_is_there(self):
        for file in ("README.md", "docs/host.md", "docs/effects.md", "docs/images/samples.png",
                     "docs/examples/negative.frag", "effects/glow/effect.json",
                     "effects/lib/color.glsl", "effects/inputs/city.png",
                     "include/DirectXEffectMgr/Include/OpenGLEffectMgr.h",
                     "bin/OrvaneDirectXEffectMgr.dll", "bin/effect-render.exe",
                     "bin/glsl2hlsl.exe", "bin/glew32.dll", "bin/libstdc++-6.dll",
                     "bin/libgcc_s_seh-1.dll", "bin/libwinpthread-1.dll",
                     "lib/libOrvaneDirectXEffectMgr.dll.a"):
            self.assertTrue((self.package / file).is_file(), file)
        headers = [h.name for h in (SOURCE / "src/DirectXEffectMgr/Include").glob("*.h")]
        installed = [h.name for h in self.package.glob("include/**/*.h")]
        self.assertEqual(sorted(installed), sorted(headers))

    def test_the_platform_is_not_bundled(self):
        self.assertEqual(list(self.package.rglob("d3dcompiler*")), [])

    def test_every_bundled_thing_has_its_licence(self):
        texts = {f.stem: f.read_text(errors="replace") for f in self.package.glob("licenses/*")}
        for name, word in {"cli11": "Cincinnati", "gcc-runtime": "Runtime Library Exception",
                           "glew": "Milan Ikits", "mingw-w64": "winpthreads",
                           "nlohmann-json": "Lohmann", "opencv": "Apache License",
                           "opencv-softfloat": "University of California", "stb": "Barrett",
                           "zlib": "Adler"}.items():
            self.assertIn(word.lower(), texts[name].lower(), name)

    def test_nothing_names_the_folders_that_it_was_made_in(self):
        for file in self.package.glob("lib/cmake/**/*.cmake"):
            text = file.read_text()
            self.assertNotIn(str(SOURCE), text, file)
            self.assertNotIn("made here", text, file)

    def test_host_of_the_readme_builds_and_draws(self):
        build = self.build_host("readme", {"CMakeLists.txt": self.block("cmake"),
                                           "host_example.cpp": self.block("cpp")})
        output = checked(*LAUNCHER, build / "host_example.exe")
        self.assertEqual(output, "amount 0: 255 255 255 255\namount 1: 0 0 0 255\n")

    def test_host_that_links_the_import_library_finds_the_dll(self):
        lists = self.block("cmake").replace("host_example.cpp", "linking.cpp")
        build = self.build_host("linking", {"CMakeLists.txt": lists, "linking.cpp": LINKING_HOST})
        self.assertEqual(call(*LAUNCHER, build / "host_example.exe")[0], 7)

    def test_another_major_version_is_not_taken(self):
        source = self.folder / "version"
        source.mkdir()
        (source / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(version LANGUAGES NONE)\n"
            "find_package(OrvaneDirectXEffectMgr 99 CONFIG REQUIRED)\n")
        status, output = call(CMAKE, "-S", source, "-B", source / "build",
                              f"-DCMAKE_PREFIX_PATH={self.package}")
        self.assertNotEqual(status, 0)
        self.assertIn("requested version \"99\"", output)

    def test_tools_work_from_the_package(self):
        self.lay_compiler_beside(self.package / "bin")
        self.addCleanup((self.package / "bin/d3dcompiler_47.dll").unlink)
        shader = self.package / "docs/examples/negative.frag"
        output = checked(*LAUNCHER, self.package / "bin/glsl2hlsl.exe", shader, "--param",
                         "float:amount")
        self.assertIn("\n=====\n", output)
        out = self.folder / "out.png"
        checked(*LAUNCHER, self.package / "bin/effect-render.exe", self.package / "effects/dream",
                "--size", "64x36", "-o", out)
        self.assertEqual(struct.unpack(">II", out.read_bytes()[16:24]), (64, 36))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
