{ A picture from Free Pascal: scene objects early bound, through interfaces declared here, the picture late bound, by
  name.

    picture PICTURE.png }
program picture;

{$mode delphi}
{$apptype console}

uses
  ActiveX, ComObj, Variants, SysUtils;

type
  { The members of a triangle, in the order of the type library, as far as they are used. }
  IZYNGLTriangle = interface(IDispatch)
    ['{97810519-95F7-4047-A493-E371B8896169}']
    procedure setPoint(index: LongInt; x, y, z: Double); safecall;
    procedure setColor(r, g, b, alpha: Double); safecall;
    procedure setNormale(index: LongInt; x, y, z: Double); safecall;
    procedure getPoint(index: LongInt; out x, y, z: Double); safecall;
  end;

const
  ClassTriangle: TGUID = '{D6F634BA-7946-4C58-AF22-0D7BD0245179}';
  Shaded = 0;

{ A triangle in the plane z = 0. }
function NewTriangle(x1, y1, x2, y2, x3, y3, r, g, b: Double): IZYNGLTriangle;
var
  I: LongInt;
begin
  Result := CreateComObject(ClassTriangle) as IZYNGLTriangle;
  Result.setPoint(0, x1, y1, 0);
  Result.setPoint(1, x2, y2, 0);
  Result.setPoint(2, x3, y3, 0);
  for I := 0 to 2 do
    Result.setNormale(I, 0, 0, 1);
  Result.setColor(r, g, b, 1);
end;

procedure CheckPoint(const Triangle: IZYNGLTriangle);
var
  x, y, z: Double;
begin
  Triangle.getPoint(1, x, y, z);
  WriteLn('early bound: corner 1 is at ', x:0:1, ', ', y:0:1, ', ', z:0:1);
end;

procedure CheckFailure(const Triangle: IZYNGLTriangle);
begin
  try
    Triangle.setPoint(3, 0, 0, 0);
    raise Exception.Create('a fourth corner was accepted');
  except
    on E: EOleException do
      WriteLn('a fourth corner: ', E.Source, ': $', IntToHex(E.ErrorCode, 8));
  end;
end;

{ Members for pictures answer no error: the thread's error information tells why there is no file. }
procedure CheckPicture;
var
  Told: IErrorInfo;
  Cause: WideString;
begin
  if GetErrorInfo(0, Told) <> S_OK then
    Exit;
  Told.GetDescription(Cause);
  raise Exception.Create(Cause);
end;

procedure Draw(const FileName: WideString);
var
  Context, Text: OleVariant;
  Triangle: IZYNGLTriangle;
begin
  Context := CreateOleObject('ZYNVue.ZYN3dGLBitmapContext');
  Context.BackColor := VarArrayOf([1.0, 1.0, 1.0]);
  Context.CreateContext(640, 480);
  { On, red, green, blue, ambient, diffuse and specular factors, azimuth and elevation. }
  Context.DirectionLight1Property := VarArrayOf([1.0, 1.0, 1.0, 1.0, 0.4, 0.6, 0.0, 0.0, 0.0]);
  Triangle := NewTriangle(0, 0, 10, 0, 5, 8, 0.9, 0.5, 0.2);
  CheckPoint(Triangle);
  CheckFailure(Triangle);
  Context.Add(Triangle as IDispatch, Shaded);
  Triangle := NewTriangle(10, 0, 15, 8, 5, 8, 0.3, 0.5, 0.8);
  Context.Add(Triangle as IDispatch, Shaded);
  Text := CreateOleObject('ZYNVue.ZYNGLTexte');
  Text.Texte := 'Free Pascal';
  Text.HauteurPixels := 40;
  Text.setPosition(7.5, 4.0, 1.0, 9);
  Context.Add(Text, Shaded);
  Context.CreatePNG('', FileName);
  CheckPicture;
  WriteLn('late bound: ', FileName);
end;

begin
  CoInitialize(nil);
  try
    Draw(ExpandFileName(ParamStr(1)));
    WriteLn('done');
  except
    on E: Exception do
    begin
      WriteLn('picture: ', E.Message);
      ExitCode := 1;
    end;
  end;
  CoUninitialize;
end.
