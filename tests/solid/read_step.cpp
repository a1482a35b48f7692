// read_step FILE.step: solids as an independent modeller reads them: valid or not, and volume, one a line.
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <STEPControl_Reader.hxx>
#include <TopExp_Explorer.hxx>
#include <cstdio>

int main(int count, char** words) {
  if (count != 2) return 2;
  STEPControl_Reader reader;
  if (reader.ReadFile(words[1]) != IFSelect_RetDone) return 1;
  reader.TransferRoots();
  const TopoDS_Shape shape = reader.OneShape();
  for (TopExp_Explorer each(shape, TopAbs_SOLID); each.More(); each.Next()) {
    GProp_GProps sums;
    BRepGProp::VolumeProperties(each.Current(), sums);
    std::printf("%s %.12g\n", BRepCheck_Analyzer(each.Current()).IsValid() ? "valid" : "invalid",
                sums.Mass());
  }
  return 0;
}
