#include "Import/Imdf/ImdfReader.hpp"

#include <utility>

#include "Import/Imdf/ImdfArchive.hpp"
#include "Import/Imdf/ImdfLevels.hpp"
#include "Import/Imdf/ImdfModel.hpp"
#include "Import/Imdf/ImdfOpenings.hpp"
#include "Import/Imdf/ImdfPlaces.hpp"
#include "Import/Imdf/ImdfShafts.hpp"
#include "Import/Imdf/ImdfShapes.hpp"
#include "Import/Imdf/ImdfUnits.hpp"
#include "Import/Imdf/ImdfWays.hpp"

namespace KorvaniTools {
namespace {

/// The language of the manifest; empty when it says nothing of use.
std::string archiveLanguage(ImdfArchive& archive) {
  constexpr auto kManifest = "manifest.json";
  const auto text = archive.text(kManifest);
  if (!text) return "";
  const Json manifest = parseJsonText(*text, archive.pathOf(kManifest));
  if (!manifest.is_object()) return "";
  const Json language = manifest.value("language", Json());
  return language.is_string() ? language.get<std::string>() : "";
}

}  // namespace

FloorPlan readImdf(const std::filesystem::path& folderOrZip, const ImdfOptions& options) {
  ArchiveLimits limits;
  limits.unfoldedBytes = options.maxUnfoldedBytes;
  const auto archive = openImdfArchive(folderOrZip, limits);
  ImdfModel model(*archive, ImdfLanguages(options.language, archiveLanguage(*archive)));
  readImdfLevels(model);
  readImdfUnits(model);
  const ImdfShapes shapes(model);
  readImdfOpenings(model, shapes);
  readImdfFixtures(model);
  joinImdfLevels(model, shapes);
  readImdfWays(model);
  readImdfPlaces(model);
  model.plan.attribution = options.attribution;
  model.plan.licence = options.licence;
  model.plan.remarks = std::move(model.remarks);
  return std::move(model.plan);
}

}  // namespace KorvaniTools
