# OpenCV (core and imgproc) for MinGW-w64, static, from the distribution's source package.
# Sourced by setup.sh.

opencv_folder() { echo "opencv-$(recipe_key "$deps_dir/opencv.sh" "$(toolchain_key)")"; }

# Everything that core and imgproc do not need for plain pixel conversion is switched off.
opencv_switches() {
    local name
    for name in 1394 ADE ARAVIS AVFOUNDATION CAP_IOS CLP CUDA DIRECTX DSHOW EIGEN FFMPEG GDAL GDCM \
        GPHOTO2 GSTREAMER GTK HALIDE HPX IMGCODEC_HDR IMGCODEC_PFM IMGCODEC_PXM \
        IMGCODEC_SUNRASTER INF_ENGINE IPP ITT JASPER JPEG LAPACK LIBREALSENSE MFX MSMF \
        NGRAPH ONNX OPENCL OPENCLAMDBLAS OPENCLAMDFFT OPENEXR OPENGL OPENJPEG OPENMP \
        OPENNI OPENNI2 OPENVX PLAIDML PNG PROTOBUF PVAPI QT QUIRC TBB TIFF UEYE V4L VA VTK \
        VULKAN WEBP WIN32UI XIMEA XINE; do
        echo "-DWITH_$name=OFF"
    done
    for name in DOCS EXAMPLES FAT_JAVA_LIB JAVA PACKAGE PERF_TESTS PROTOBUF SHARED_LIBS TESTS ZLIB \
        opencv_apps opencv_java opencv_python3 opencv_python2 opencv_js ITT; do
        echo "-DBUILD_$name=OFF"
    done
}

build_opencv() {
    local work=$1 result=$2
    fetch_source opencv "$work/source"
    # shellcheck disable=SC2046
    cmake -S "$work/source" -B "$work/build" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$deps_dir/../mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$result" -DBUILD_LIST=core,imgproc \
        -DOPENCV_ENABLE_ALLOCATOR_STATS=OFF -DCPU_DISPATCH= \
        -DCMAKE_DISABLE_FIND_PACKAGE_Doxygen=ON $(opencv_switches)
    cmake --build "$work/build"
    cmake --install "$work/build"
}
