// The table of record readers: one line per kind whose record the program
// reads. Each reader builds its object and adds it to the document.
#include "document/document.h"
#include "persist/docio.h"
#include "persist/record.h"

namespace vt {

void RegisterPointReader();
void RegisterAnimationReaders();  // AC (tracks inside) and LO
void RegisterScreenItemReaders();  // TT and BT
void RegisterNoteReader();         // NT (tools/notes.cpp)
void RegisterSweptReaders();       // SR and SS (graphs/swept.cpp)
void RegisterDerivedSurfaceReaders();  // FA, RB, SP and IL (geometry/derived_surfaces.cpp)

namespace {

template <class T, class C>
void AddLoaded(C& collection, std::unique_ptr<T> obj) {
  collection.Add(std::move(obj));
}

void ReadLine(RecordReader& r, int) { AddLoaded(Doc.Lines, CLine::Load(r)); }
void ReadCircle(RecordReader& r, int) { AddLoaded(Doc.Circles, CCircle::Load(r)); }
void ReadArc(RecordReader& r, int) { AddLoaded(Doc.Arcs, CArc::Load(r)); }
void ReadRegion(RecordReader& r, int) { AddLoaded(Doc.Regions, CRegion::Load(r)); }
void ReadFunCurve(RecordReader& r, int) { AddLoaded(Doc.FunCurves, CFunCurve::Load(r)); }
void ReadSurface(RecordReader& r, int) { AddLoaded(Doc.Surfaces, CSurface::Load(r)); }

}  // namespace

void RegisterBuiltInReaders() {
  RegisterPointReader();
  RegisterRecordReader("LN", &ReadLine);
  RegisterRecordReader("CR", &ReadCircle);
  RegisterRecordReader("AR", &ReadArc);
  RegisterRecordReader("RG", &ReadRegion);
  RegisterRecordReader("C2", &ReadFunCurve);
  RegisterAnimationReaders();
  RegisterScreenItemReaders();
  RegisterNoteReader();
  RegisterRecordReader("C3", &ReadSurface);
  RegisterRecordReader("SF", &ReadSurface);
  RegisterSweptReaders();
  RegisterDerivedSurfaceReaders();
}

}  // namespace vt
