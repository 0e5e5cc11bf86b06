#include "tests/win/support/test_printer.h"

#include <windows.h>

#include <winspool.h>

#include <filesystem>
#include <fstream>

#include "base/win/wide.h"

namespace merivane {
namespace {

constexpr char kDescription[] = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*ModelName: "Merivane test printer"
*NickName: "Merivane test printer"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*TTRasterizer: Type42
*DefaultResolution: 600dpi
*LandscapeOrientation: Plus90
*OpenUI *PageSize: PickOne
*DefaultPageSize: A4
*PageSize A4/A4: "<</PageSize [595 842]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*DefaultPageRegion: A4
*PageRegion A4/A4: "<</PageSize [595 842]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "12 12 583 830"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
*DefaultFont: Courier
*Font Courier: Standard "(002.004S)" Standard ROM
)ppd";

const FARPROC outsideNameOf = GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");

}  // namespace

bool canInstallTestPrinter() { return outsideNameOf != nullptr; }

std::string outsideName(const std::string& name) {
  using NameOf = char*(CDECL*)(LPCWSTR);
  const std::wstring path = std::filesystem::absolute(name).wstring();
  char* const outside = reinterpret_cast<NameOf>(reinterpret_cast<void*>(outsideNameOf))(path.c_str());
  const std::string result = "'" + std::string(outside != nullptr ? outside : "") + "'";
  HeapFree(GetProcessHeap(), 0, outside);
  return result;
}

bool installTestPrinter(const std::string& command) {
  wchar_t folder[MAX_PATH] = L"";
  DWORD needed = 0;
  if (!GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder), sizeof folder,
                                  &needed)) {
    return false;
  }
  std::filesystem::create_directories(folder);
  std::wstring description = std::wstring(folder) + L"\\merivane.ppd";
  std::ofstream(std::filesystem::path(description), std::ios::binary) << kDescription;
  std::wstring name = L"Merivane test printer", library = L"wineps.drv", port = L"LPT1:",
               processor = L"winprint", kind = L"RAW";
  DRIVER_INFO_3W driver = {};
  driver.cVersion = 3;
  driver.pName = name.data();
  driver.pDriverPath = driver.pConfigFile = library.data();
  driver.pDataFile = description.data();
  AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver),
                      APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY);
  PRINTER_INFO_2W printer = {};
  printer.pPrinterName = printer.pDriverName = name.data();
  printer.pPortName = port.data();
  printer.pPrintProcessor = processor.data();
  printer.pDatatype = kind.data();
  if (const HANDLE added = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer))) ClosePrinter(added);
  const std::wstring pipe = L"|" + wide(command);
  return SetDefaultPrinterW(name.c_str()) &&
         RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\Printing\\Spooler", port.c_str(), REG_SZ,
                         pipe.c_str(),
                         static_cast<DWORD>((pipe.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

}  // namespace merivane
