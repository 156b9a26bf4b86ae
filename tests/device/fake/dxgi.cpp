#include "fake/dxgi.h"

#include <cwchar>

#include "fake/describe.h"

namespace fake {

DXGI_ADAPTER_DESC adapterDescription() {
    DXGI_ADAPTER_DESC desc{};
    std::wcscpy(desc.Description, L"Fake Adapt\u00e9r");
    desc.VendorId = 4318;
    desc.DeviceId = 7;
    desc.DedicatedVideoMemory = (SIZE_T{3000} << 20) + 12345;
    desc.DedicatedSystemMemory = SIZE_T{17} << 20;
    desc.SharedSystemMemory = (SIZE_T{8000} << 20) + 1;
    return desc;
}

HRESULT Adapter::GetDesc(DXGI_ADAPTER_DESC* out) {
    const HRESULT code = world().enter("GetDesc");
    world().record({name(), "GetDesc", "", FAILED(code) ? hexCode(code) : "", {}, nullptr});
    if (SUCCEEDED(code)) {
        *out = adapterDescription();
    }
    return code;
}

HRESULT DxgiDevice::GetAdapter(IDXGIAdapter** out) {
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    const HRESULT code = world().enter("GetAdapter");
    Call call{name(), "GetAdapter", "", hexCode(code), {}, nullptr};
    if (SUCCEEDED(code)) {
        call.outcome = publish(world(), std::make_unique<Adapter>(world()), out)->name();
    }
    world().record(std::move(call));
    return code;
}

}  // namespace fake
