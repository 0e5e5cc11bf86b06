#include "base/win/dpi.h"

namespace merivane {
namespace {

/// A function of user32 that older systems do not have; null there.
template <typename Function>
Function* systemFunction(const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32"), name);
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}

NONCLIENTMETRICSW nonClientMetrics(int dpi) {
  static const auto metricsFor =
      systemFunction<BOOL WINAPI(UINT, UINT, void*, UINT, UINT)>("SystemParametersInfoForDpi");
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  if (metricsFor != nullptr) {
    metricsFor(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi));
  } else {
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  }
  return metrics;
}

}  // namespace

int dpiOf(HWND window) {
  static const auto ofWindow = systemFunction<UINT WINAPI(HWND)>("GetDpiForWindow");
  const UINT dpi = ofWindow != nullptr ? ofWindow(window) : 0;
  return dpi != 0 ? static_cast<int>(dpi) : GetDeviceCaps(WindowDc(nullptr), LOGPIXELSX);
}

int systemMetric(int metric, int dpi) {
  static const auto metricFor = systemFunction<int WINAPI(int, UINT)>("GetSystemMetricsForDpi");
  return metricFor != nullptr ? metricFor(metric, static_cast<UINT>(dpi)) : GetSystemMetrics(metric);
}

ControlFonts::ControlFonts(int dpi) {
  const NONCLIENTMETRICSW metrics = nonClientMetrics(dpi);
  message = Font(CreateFontIndirectW(&metrics.lfMessageFont));
  status = Font(CreateFontIndirectW(&metrics.lfStatusFont));
}

}  // namespace merivane
