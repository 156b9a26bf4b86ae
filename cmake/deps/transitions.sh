# The public transitions that the gallery draws: text files of an npm package under the MIT licence.
# Nothing of the package is run. Sourced by setup.sh.

transitions_package=gl-transitions@1.71.0
transitions_sha256=25d4ca522e9af1fbad3054bd4c7683fae5264949111cce0f14ff1d2e81148ea3

transitions_folder() { echo "transitions-$(recipe_key "$deps_dir/transitions.sh")"; }

build_transitions() {
    local work=$1 result=$2 archive
    archive=$(npm pack --silent --ignore-scripts "$transitions_package" | tail -n 1)
    echo "$transitions_sha256  $work/$archive" | sha256sum --check --strict
    tar -xf "$work/$archive" package/LICENSE package/transitions
    cp package/LICENSE "$result/"
    cp package/transitions/*.glsl "$result/"
}
