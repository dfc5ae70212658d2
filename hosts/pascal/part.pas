{ A part from Free Pascal, late bound: coloured by its height with a colour bar, its base hidden.

    part PART.obj FOLDER }
program part;

{$mode delphi}
{$apptype console}

uses
  ActiveX, ComObj, Variants, SysUtils;

{ The third coordinate of every point. }
function Heights(const Points: OleVariant): OleVariant;
var
  I, Count: LongInt;
begin
  Count := (VarArrayHighBound(Points, 1) + 1) div 3;
  Result := VarArrayCreate([0, Count - 1], varDouble);
  for I := 0 to Count - 1 do
    Result[I] := Points[3 * I + 2];
end;

{ The faces of the base, or all others. }
function Faces(const Mesh: OleVariant; OfBase: Boolean): Variant;
var
  Face, Count: LongInt;
begin
  Count := 0;
  Result := VarArrayCreate([0, Mesh.NbFaces - 1], varInteger);
  for Face := 0 to Mesh.NbFaces - 1 do
    if (Mesh.NomGroupe(Face) = 'base') = OfBase then
    begin
      Result[Count] := Face;
      Inc(Count);
    end;
  VarArrayRedim(Result, Count - 1);
end;

procedure AddGroup(const Context, Mesh: OleVariant; OfBase: Boolean);
var
  Group: OleVariant;
begin
  Group := CreateOleObject('ZYNVue.ZYNGroupe');
  Group.Add(Mesh.Extraire(Faces(Mesh, OfBase)), 0);
  Group.Visible := not OfBase;
  Context.Add(Group, 0);
end;

function NewCamera: OleVariant;
begin
  Result := CreateOleObject('ZYNVue.ZYNCamera');
  Result.setOeil(60.0, -110.0, 90.0);
  Result.setCible(0.0, 0.0, 22.0);
  Result.setHaut(0.0, 0.0, 1.0);
  Result.Largeur := 100.0;
  Result.Hauteur := 75.0;
  Result.Perspective := True;
end;

procedure WriteText(const FileName, Line: string);
var
  Output: TextFile;
begin
  AssignFile(Output, FileName);
  Rewrite(Output);
  WriteLn(Output, Line);
  CloseFile(Output);
end;

procedure Draw(const Source, Folder: WideString);
var
  Mesh, Colours, Context, Camera: OleVariant;
begin
  Mesh := CreateOleObject('ZYNVue.ZYNGLMaillage');
  Mesh.Charger(Source);
  Mesh.setValeurs(Heights(Mesh.getSommets));
  Colours := CreateOleObject('ZYNVue.ZYNEchelleCouleurs');
  Colours.Titre := 'height, mm';
  Mesh.EchelleCouleurs := Colours;
  Context := CreateOleObject('ZYNVue.ZYN3dGLBitmapContext');
  Context.BackColor := VarArrayOf([1.0, 1.0, 1.0]);
  Context.MultiSampleAntialiasing := True;
  Context.CreateContext(800, 600);
  AddGroup(Context, Mesh, True);
  AddGroup(Context, Mesh, False);
  Context.Add(Colours, 0);
  Camera := NewCamera;
  Context.Camera := Camera;
  Context.Exporter(Folder + '\part.png');
  WriteText(Folder + '\part.camera', Camera.Texte);
end;

begin
  CoInitialize(nil);
  try
    Draw(ExpandFileName(ParamStr(1)), ExpandFileName(ParamStr(2)));
    WriteLn('done');
  except
    on E: Exception do
    begin
      WriteLn('part: ', E.Message);
      ExitCode := 1;
    end;
  end;
  CoUninitialize;
end.
