<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>CommonFramelessTitleBar</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>向下还原</source>
        <translation>Restore</translation>
    </message>
    <message>
        <source>最大化</source>
        <translation>Maximize</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>窗口图标</source>
        <translation>Window icon</translation>
    </message>
</context>
<context>
    <name>ExtraOptionWidget</name>
    <message>
        <source>Form</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>RIP后手动打印</source>
        <translation>Manual print after RIP</translation>
    </message>
    <message>
        <source>RIP后自动打印</source>
        <translation>Automatic print after RIP</translation>
    </message>
    <message>
        <source>打印模式</source>
        <translation>Print mode</translation>
    </message>
    <message>
        <source>边RIP边打印</source>
        <translation>Print while RIP</translation>
    </message>
    <message>
        <source>镜像打印</source>
        <translation>Mirror print</translation>
    </message>
</context>
<context>
    <name>IccProfileInfo</name>
    <message>
        <source>文件不存在</source>
        <translation>The file does not exist</translation>
    </message>
    <message>
        <source>这不是一个文件</source>
        <translation>This is not a file</translation>
    </message>
    <message>
        <source>文件太大（%1 字节，最多 %2 字节）</source>
        <translation>The file is too large (%1 bytes, at most %2 bytes)</translation>
    </message>
    <message>
        <source>文件无法读取：%1</source>
        <translation>The file cannot be read: %1</translation>
    </message>
    <message>
        <source>文件是空的</source>
        <translation>The file is empty</translation>
    </message>
    <message>
        <source>文件只有 %1 字节，放不下 ICC 文件头</source>
        <translation>The file has only %1 bytes, too few for an ICC header</translation>
    </message>
    <message>
        <source>文件头里没有 ICC 配置文件的标记 &quot;acsp&quot;</source>
        <translation>The header lacks the ICC profile signature &quot;acsp&quot;</translation>
    </message>
    <message>
        <source>文件不完整：文件头写明 %1 字节，文件只有 %2 字节</source>
        <translation>The file is incomplete: its header gives %1 bytes, the file has only %2 bytes</translation>
    </message>
    <message>
        <source>文件头写明的大小（%1 字节）放不下文件头</source>
        <translation>The size in the header (%1 bytes) is too small for the header itself</translation>
    </message>
    <message>
        <source>标签表（%1 个标签）超出了配置文件的末尾</source>
        <translation>The tag table (%1 tags) runs past the end of the profile</translation>
    </message>
    <message>
        <source>标签 &quot;%1&quot; 指向配置文件之外</source>
        <translation>The tag &quot;%1&quot; points outside the profile</translation>
    </message>
    <message>
        <source>文件头写明的类别 &quot;%1&quot; 不是 ICC 配置文件的类别</source>
        <translation>The class in the header, &quot;%1&quot;, is not an ICC profile class</translation>
    </message>
    <message>
        <source>文件头写明的色彩空间 &quot;%1&quot; 无法识别</source>
        <translation>The colour space in the header, &quot;%1&quot;, is unknown</translation>
    </message>
    <message>
        <source>文件头写明的连接空间 &quot;%1&quot; 不适用于这类配置文件</source>
        <translation>The connection space in the header, &quot;%1&quot;, does not suit this class of profile</translation>
    </message>
    <message>
        <source>Little CMS 无法启动</source>
        <translation>Little CMS could not start</translation>
    </message>
    <message>
        <source>Little CMS 无法读取这个配置文件：%1</source>
        <translation>Little CMS cannot read this profile: %1</translation>
    </message>
    <message>
        <source>原因不明</source>
        <translation>no reason given</translation>
    </message>
    <message>
        <source>配置文件里没有所需的转换表</source>
        <translation>the profile lacks the tables needed</translation>
    </message>
    <message>
        <source>灰度</source>
        <translation>Gray</translation>
    </message>
    <message>
        <source>%1 色</source>
        <translation>%1-colour</translation>
    </message>
    <message>
        <source>输入设备</source>
        <translation>input device</translation>
    </message>
    <message>
        <source>显示器</source>
        <translation>display</translation>
    </message>
    <message>
        <source>输出设备</source>
        <translation>output device</translation>
    </message>
    <message>
        <source>设备链接</source>
        <translation>device link</translation>
    </message>
    <message>
        <source>抽象</source>
        <translation>abstract</translation>
    </message>
    <message>
        <source>色彩空间转换</source>
        <translation>colour space conversion</translation>
    </message>
    <message>
        <source>命名颜色</source>
        <translation>named colour</translation>
    </message>
    <message>
        <source>（没有描述）</source>
        <translation>(no description)</translation>
    </message>
    <message>
        <source>描述：%1</source>
        <translation>Description: %1</translation>
    </message>
    <message>
        <source>类别：%1（%2）</source>
        <translation>Class: %1 (%2)</translation>
    </message>
    <message>
        <source>色彩空间：%1，连接空间：%2</source>
        <translation>Colour space: %1, connection space: %2</translation>
    </message>
    <message>
        <source>ICC 版本：%1</source>
        <translation>ICC version: %1</translation>
    </message>
    <message>
        <source>这是一个 %1 色彩空间的配置文件，此处需要 %2 配置文件</source>
        <translation>This is a profile of the %1 colour space; a profile of the %2 colour space is needed here</translation>
    </message>
    <message>
        <source>这是一个%1配置文件，此处需要 %2 输入配置文件</source>
        <translation>This profile&apos;s class is %1; an input profile of the %2 colour space is needed here</translation>
    </message>
    <message>
        <source>这个配置文件不能把 %1 颜色转换到连接空间：%2</source>
        <translation>This profile cannot convert %1 colours to the connection space: %2</translation>
    </message>
    <message>
        <source>这不是可用的 ICC 配置文件：%1</source>
        <translation>This is not a usable ICC profile: %1</translation>
    </message>
    <message>
        <source>这个设备链接无法使用：%1</source>
        <translation>This device link cannot be used: %1</translation>
    </message>
    <message>
        <source>这是一个%1配置文件，此处需要输出设备配置文件或设备链接</source>
        <translation>This profile&apos;s class is %1; an output device profile or a device link is needed here</translation>
    </message>
    <message>
        <source>这个输出设备配置文件不能把连接空间转换到设备颜色：%1</source>
        <translation>This output device profile cannot convert the connection space to device colours: %1</translation>
    </message>
</context>
<context>
    <name>IccProfileRow</name>
    <message>
        <source>配置文件有问题</source>
        <translation>Problem with this profile</translation>
    </message>
    <message>
        <source>配置文件文件夹里没有这个文件：
%1</source>
        <translation>The profile folder has no such file:
%1</translation>
    </message>
</context>
<context>
    <name>InkOrderWidget</name>
    <message>
        <source>墨水顺序</source>
        <translation>Ink order</translation>
    </message>
</context>
<context>
    <name>InstallPrinterDriverDlg</name>
    <message>
        <source> (已安装)</source>
        <translation> (Installed)</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>安装</source>
        <translation>Install</translation>
    </message>
    <message>
        <source>安装失败</source>
        <translation>Installation failure</translation>
    </message>
    <message>
        <source>安装打印机</source>
        <translation>Install printer</translation>
    </message>
    <message>
        <source>打印机列表</source>
        <translation>List of printers</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>生产商列表</source>
        <translation>List of manufacturers</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>确认删除驱动&quot;%1&quot;吗?</source>
        <translation>Are you sure to delete the driver &quot;%1&quot;?</translation>
    </message>
</context>
<context>
    <name>ModifyPrinterDriverNameDlg</name>
    <message>
        <source>修改打印机名</source>
        <translation>Modify printer name</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>打印机名</source>
        <translation>Printer Name</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
</context>
<context>
    <name>PrinterDriverManagerDlg</name>
    <message>
        <source> (默认)</source>
        <translation> (Default)</translation>
    </message>
    <message>
        <source>修改打印机名</source>
        <translation>Modify printer name</translation>
    </message>
    <message>
        <source>删除打印机</source>
        <translation>Delete printer</translation>
    </message>
    <message>
        <source>安装打印机</source>
        <translation>Install printer</translation>
    </message>
    <message>
        <source>安装自定义打印机</source>
        <translation>Install customized printer</translation>
    </message>
    <message>
        <source>导入打印机</source>
        <translation>Import printer</translation>
    </message>
    <message>
        <source>导出打印机</source>
        <translation>Export printer</translation>
    </message>
    <message>
        <source>已安装的打印机</source>
        <translation>Installed printer</translation>
    </message>
    <message>
        <source>打印机 (*.bex_driver)</source>
        <translation>Printer (*.bex_driver)</translation>
    </message>
    <message>
        <source>打印机名称修改失败</source>
        <translation>Failed to change the printer name</translation>
    </message>
    <message>
        <source>打印机属性</source>
        <translation>Property</translation>
    </message>
    <message>
        <source>打印机管理</source>
        <translation>Printer management</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>自定义打印机</source>
        <translation>Customize printer</translation>
    </message>
    <message>
        <source>设置为默认</source>
        <translation>Set as default</translation>
    </message>
    <message>
        <source>设置默认打印机失败</source>
        <translation>Default printer loading failure</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>驱动安装失败</source>
        <translation>Failed to install driver</translation>
    </message>
    <message>
        <source>驱动导入失败</source>
        <translation>Failed to import driver</translation>
    </message>
    <message>
        <source>驱动导出失败</source>
        <translation>Failed to export driver</translation>
    </message>
</context>
<context>
    <name>PrinterDriverPropertyDlg</name>
    <message>
        <source>
(选择取消,将会将icc文件名改为&quot;%2&quot;)</source>
        <translation>
(Select cancel, icc file rename as &quot;%2&quot;)</translation>
    </message>
    <message>
        <source>&quot;%1&quot;已经存在.是否覆盖?</source>
        <translation>&quot;%1&quot;existed, cover or not?</translation>
    </message>
    <message>
        <source>CMYK</source>
        <translation>CMYK</translation>
    </message>
    <message>
        <source>ICC设置</source>
        <translation>ICC settings</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RGB</translation>
    </message>
    <message>
        <source>icc (*.icc *.icm)</source>
        <translation>icc (*.icc *.icm)</translation>
    </message>
    <message>
        <source>下次不再询问</source>
        <translation>Never ask again</translation>
    </message>
    <message>
        <source>其他属性</source>
        <translation>Other Properties</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Ohter options</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>品红(M)</source>
        <translation>M</translation>
    </message>
    <message>
        <source>墨水</source>
        <translation>Ink</translation>
    </message>
    <message>
        <source>墨水设置</source>
        <translation>Ink settings</translation>
    </message>
    <message>
        <source>属性设置失败</source>
        <translation>Property setting failure</translation>
    </message>
    <message>
        <source>意图</source>
        <translation>Intent</translation>
    </message>
    <message>
        <source>感性</source>
        <translation>Perceptual</translation>
    </message>
    <message>
        <source>打印机属性</source>
        <translation>Property</translation>
    </message>
    <message>
        <source>打印机驱动 - </source>
        <translation>Driver - </translation>
    </message>
    <message>
        <source>打印精度</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>拷贝icc失败</source>
        <translation>Copy icc failure</translation>
    </message>
    <message>
        <source>最大墨量</source>
        <translation>Maximum ink</translation>
    </message>
    <message>
        <source>校色模式</source>
        <translation>Colour correction pattern</translation>
    </message>
    <message>
        <source>浓度</source>
        <translation>Density</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>相对色</source>
        <translation>Relative colorimetric</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>纸张</source>
        <translation>Media</translation>
    </message>
    <message>
        <source>组合类型</source>
        <translation>Combination</translation>
    </message>
    <message>
        <source>绝对色</source>
        <translation>Absolute colorimetric</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Equipment</translation>
    </message>
    <message>
        <source>请选择icc (CMYK)</source>
        <translation>icc (CMYK)</translation>
    </message>
    <message>
        <source>请选择icc (RGB)</source>
        <translation>icc (RGB)</translation>
    </message>
    <message>
        <source>请选择设备曲线</source>
        <translation>Select equipment icc</translation>
    </message>
    <message>
        <source>载入设备曲线...</source>
        <translation>Loading Equipment icc...</translation>
    </message>
    <message>
        <source>选择</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>青色(C)</source>
        <translation>C</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>黄色(Y)</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>黑色(K)</source>
        <translation>K</translation>
    </message>
    <message>
        <source>%1 浓度</source>
        <translation>%1 density</translation>
    </message>
    <message>
        <source>%1 最大墨量</source>
        <translation>%1 maximum ink</translation>
    </message>
    <message>
        <source>RGB 配置文件</source>
        <translation>RGB profile</translation>
    </message>
    <message>
        <source>CMYK 配置文件</source>
        <translation>CMYK profile</translation>
    </message>
    <message>
        <source>&quot;%1&quot;：%2</source>
        <translation>&quot;%1&quot;: %2</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>如果继续安装，将会覆盖以下文件:</source>
        <translation>Continue to install, files will be covered:</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>是否继续？</source>
        <translation>Continue or not?</translation>
    </message>
    <message>
        <source>温馨提示</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Bex</source>
        <translation>Bex</translation>
    </message>
    <message>
        <source>请选择默认打印机</source>
        <translation>Select default printer</translation>
    </message>
</context>
</TS>
