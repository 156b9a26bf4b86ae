# The HLSL compiler for tests and demos: d3dcompiler_47.dll (x64), unpacked from an npm package.
# Nothing of the package is run. Sourced by setup.sh.

d3dcompiler_package=gl@8.1.6
d3dcompiler_member=package/deps/windows/dll/x64/d3dcompiler_47.dll
d3dcompiler_sha256=e994847e01a6f1e4cbdc5a864616ac262f67ee4f14db194984661a8d927ab7f4

d3dcompiler_folder() { echo "d3dcompiler-$(recipe_key "$deps_dir/d3dcompiler.sh")"; }

build_d3dcompiler() {
    local work=$1 result=$2 archive
    archive=$(npm pack --silent --ignore-scripts "$d3dcompiler_package" | tail -n 1)
    tar -xf "$work/$archive" "$d3dcompiler_member"
    echo "$d3dcompiler_sha256  $d3dcompiler_member" | sha256sum --check --strict
    cp "$d3dcompiler_member" "$result/d3dcompiler_47.dll"
}
